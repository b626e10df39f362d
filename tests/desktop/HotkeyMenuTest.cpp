#include "HotkeyFixture.h"
#include "harness/KeyboardState.h"
#include "harness/OpenMenu.h"
#include "harness/PlainWindow.h"
#include "harness/PopUps.h"
#include "harness/Rest.h"
#include "harness/WaitFor.h"
#include "harness/XfcePanel.h"

#include <algorithm>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QRect menuArea{300, 200, 150, 200};
constexpr QPoint besideTheMenu{700, 500};

/// The shortcuts while another program's menu has the keyboard.
struct HotkeyMenuTest : HotkeyFixture {
    /// Opens the menu of a window that has the focus, and comes back when the agent listens.
    void startWithMenu()
    {
        start();
        window = std::make_unique<PlainWindow>(display(), QRect{100, 100, 300, 200});
        window->show();
        window->takeFocus();
        openMenu();
    }
    void openMenu(const QRect &area = menuArea)
    {
        menu.reset(); // an earlier one
        const pid_t process = agent->process().pid();
        const std::int64_t before = wakeUps(process);
        menu = std::make_unique<OpenMenu>(display(), area);
        ASSERT_TRUE(waitFor([&] { return wakeUps(process) > before; }));
        ASSERT_TRUE(comesToRest(process, 200ms));
    }

    std::unique_ptr<PlainWindow> window;
    std::unique_ptr<OpenMenu> menu;
};

TEST_F(HotkeyMenuTest, takesACaptureWithTheMenu)
{
    startWithMenu();
    pressFullScreen();
    EXPECT_TRUE(captures(1));
    EXPECT_TRUE(menu->isOpen());
    const QImage seen = clipboardPicture(*desktop);
    EXPECT_EQ(seen.pixelColor(menuArea.center()), QColor(0xd0, 0xd0, 0xd0));
}

TEST_F(HotkeyMenuTest, beginsASelectionThatHasTheKeyboardOnceTheMenuCloses)
{
    startWithMenu();
    pressSelection();
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    click(besideTheMenu);
    ASSERT_TRUE(waitFor([this] { return !menu->isOpen(); }));
    // The overlay asks for the keyboard again and again, and has it within a moment.
    EXPECT_TRUE(waitFor([this] {
        press(u"Return"_s);
        return !overlayIsUp();
    }));
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, firesUnderLocksAndASecondLayout)
{
    startWithMenu();
    ASSERT_EQ(desktop->ask({u"setxkbmap"_s, u"us,fr"_s}).ending, Ending{});
    setLayout(display(), 1);
    setLocks(display(), XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, firesForModifiersThatWereDownBeforeTheMenuOpened)
{
    start();
    holdKeys({key::controlLeft, key::shiftLeft});
    openMenu();
    pressKeys({}, key::one);
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, firesForNoOtherCombination)
{
    startWithMenu();
    pressKeys({}, key::one);
    pressKeys({key::controlLeft}, key::one);
    pressKeys({key::controlLeft, key::shiftLeft, key::altLeft}, key::one);
    pressKeys({key::controlLeft, key::shiftLeft, key::superLeft}, key::one);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, firesOnceThoughTheKeyIsHeld)
{
    startWithMenu();
    ASSERT_EQ(desktop->ask({u"xset"_s, u"r"_s, u"rate"_s, u"20"_s, u"100"_s}).ending, Ending{});
    holdKeys({key::controlLeft, key::shiftLeft, key::one});
    constexpr int withRepetitions = 20;
    ASSERT_TRUE(waitFor([this] { return menu->isOpen() && menu->keys() > withRepetitions; }));
    releaseKeys({key::one, key::shiftLeft, key::controlLeft});
    pressFullScreen();
    EXPECT_TRUE(captures(2));
}

TEST_F(HotkeyMenuTest, doesNotFireAgainWhenTheMenuClosesOverAHeldKey)
{
    startWithMenu();
    ASSERT_EQ(desktop->ask({u"xset"_s, u"r"_s, u"rate"_s, u"20"_s, u"100"_s}).ending, Ending{});
    holdKeys({key::controlLeft, key::shiftLeft, key::one});
    ASSERT_TRUE(captures(1));
    click(besideTheMenu);
    ASSERT_TRUE(waitFor([this] { return !menu->isOpen(); }));
    EXPECT_FALSE(waitFor([this] { return clipboard->changes() > 1; }, 400ms));
    releaseKeys({key::one});
    pressFullScreen();
    EXPECT_TRUE(captures(2));
}

TEST_F(HotkeyMenuTest, firesOnceAPressBeforeWhileAndAfterTheMenuIsOpen)
{
    start();
    int presses = 0;
    for (int menus = 0; menus < 3; ++menus) {
        pressFullScreen();
        EXPECT_TRUE(captures(++presses));
        openMenu();
        pressFullScreen();
        EXPECT_TRUE(captures(++presses));
        click(besideTheMenu);
        ASSERT_TRUE(waitFor([this] { return !menu->isOpen(); }));
    }
}

TEST_F(HotkeyMenuTest, theAgentRestsAgainOnceTheMenuHasClosed)
{
    startWithMenu();
    click(besideTheMenu);
    ASSERT_TRUE(waitFor([this] { return !menu->isOpen(); }));
    window->listen();
    window->takeFocus();
    pressKeys({}, key::letterA); // the server makes much of the first key of a keyboard
    const pid_t process = agent->process().pid();
    ASSERT_TRUE(comesToRest(process, 300ms));
    const std::int64_t before = wakeUps(process);
    pressKeys({}, key::letterA);
    ASSERT_TRUE(waitFor([this] { return window->keyEvents() == 4; }));
    EXPECT_EQ(wakeUps(process), before);
}

TEST_F(HotkeyMenuTest, firesInTheMenuOfAWindowThatFillsTheScreen)
{
    startDesktop(smallScreen());
    startAgentWith(fullScreenShortcut);
    const PlainWindow film(display(), {100, 100, 300, 200});
    film.setAtoms("_NET_WM_STATE", {"_NET_WM_STATE_FULLSCREEN"});
    film.show();
    ASSERT_TRUE(waitFor([&] { return film.outermostFrame() == QRect(0, 0, 640, 480); }));
    openMenu();
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, firesUnderAnotherWindowManagerToo)
{
    startDesktop({.server = {.size = {640, 480}}, .windowManager = WindowManager::Xfwm4});
    startAgentWith(fullScreenShortcut);
    const auto terminal = PlainWindow::shown(display(), {100, 100, 300, 200});
    terminal.takeFocus();
    pressFullScreen();
    EXPECT_TRUE(captures(1));
    openMenu();
    pressFullScreen();
    EXPECT_TRUE(captures(2));
}

TEST_F(HotkeyMenuTest, firesThoughSomethingHidesOneOfTheScreens)
{
    start();
    openMenu({0, 0, 800, 600});
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, doesNotFireOnALockedScreen)
{
    start();
    openMenu({0, 0, 1440, 600}); // what a screen locker is to others
    pressFullScreen();
    constexpr int pressedKeys = 3;
    ASSERT_TRUE(waitFor([this] { return menu->isOpen() && menu->keys() == pressedKeys; }));
    openMenu(menuArea);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, doesNotFireOnScreensThatAreLockedOneByOne)
{
    start();
    const PlainWindow right(display(), {800, 0, 640, 600}, Placement::ByItself);
    right.show();
    openMenu({0, 0, 800, 600});
    pressFullScreen();
    constexpr int pressedKeys = 3;
    ASSERT_TRUE(waitFor([this] { return menu->isOpen() && menu->keys() == pressedKeys; }));
    right.hide();
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyMenuTest, firesInTheMenuOfAPanel)
{
    startDesktop();
    screen->lower(); // beneath the panel, too
    XfcePanel panel(*desktop);
    startAgentWith(fullScreenShortcut);
    panel.requireIcon();
    const XConnection connection(display());
    const auto menus = [&] {
        return std::ranges::count_if(popUps(connection),
                                     [](const QRect &area) { return area.height() > 100; });
    };
    const auto before = menus();
    // A tray that has just started may not listen yet.
    ASSERT_TRUE(waitFor([&] {
        click(XfcePanel::iconCentre());
        return waitFor([&] { return menus() > before; }, 3s);
    }));
    ASSERT_TRUE(comesToRest(agent->process().pid(), 100ms));
    pressFullScreen();
    EXPECT_TRUE(captures(1));
    EXPECT_GT(menus(), before);
}

} // namespace
} // namespace lumacap::harness
