#include "CoveredScreen.h"
#include "harness/OpenMenu.h"
#include "harness/PlainWindow.h"
#include "harness/Rest.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <gtest/gtest.h>

#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct OverlayInputTest : CoveredScreenTest { };

TEST_F(OverlayInputTest, hasTheKeyboardAtOnce)
{
    start(sideBySide());
    const auto other = PlainWindow::shown(display, {100, 100, 100, 100});
    other.takeFocus();
    const Process &process = coverRight();
    press(u"Return"_s);
    EXPECT_TRUE(says(process, "key Return"));
    EXPECT_TRUE(says(process, "active"));
    press(u"KP_Enter"_s);
    EXPECT_TRUE(says(process, "key Enter"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

TEST_F(OverlayInputTest, keepsTheKeyboardWhenAnotherWindowTakesTheFocus)
{
    start(sideBySide());
    const Process &process = coverRight();
    const auto other = PlainWindow::shown(display, {100, 100, 100, 100});
    other.takeFocus();
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(other.hasFocus()); // it was not there before; whoever has it now keeps it
}

TEST_F(OverlayInputTest, keepsADragThatLeadsToTheOtherMonitor)
{
    start(sideBySide());
    auto other = PlainWindow::shown(display, {0, 0, 200, 200});
    other.listen();
    const Process &process = coverRight();
    xdotool({u"mousemove"_s, u"740"_s, u"300"_s, u"mousedown"_s, u"1"_s, u"mousemove"_s, u"40"_s,
             u"50"_s});
    EXPECT_TRUE(says(process, "press 100 200"));
    EXPECT_TRUE(says(process, "moved -600 -50"));
    xdotool({u"mouseup"_s, u"1"_s});
    EXPECT_TRUE(says(process, "release -600 -50"));
    EXPECT_EQ(other.buttonPresses(), 0);
}

TEST_F(OverlayInputTest, hasThePointerThatWasOnTheOtherMonitor)
{
    start(sideBySide());
    xdotool({u"mousemove"_s, u"40"_s, u"50"_s});
    const Process &process = coverRight();
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    EXPECT_TRUE(says(process, "release 100 200"));
}

TEST_F(OverlayInputTest, keepsTheKeyThatEndsItUntilThatIsReleased)
{
    start(sideBySide());
    auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.listen();
    earlier.takeFocus();
    const Process &process = coverRight();
    xdotool({u"keydown"_s, u"Escape"_s});
    ASSERT_TRUE(says(process, "uncovered"));
    ASSERT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    xdotool({u"keyup"_s, u"Escape"_s});
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
    EXPECT_EQ(earlier.keyEvents(), 0);
    press(u"a"_s);
    EXPECT_TRUE(waitFor([&] { return earlier.keyEvents() == 2; }));
}

TEST_F(OverlayInputTest, givesTheKeyboardUpThoughAKeyStaysDown)
{
    start(sideBySide());
    const Process &process = coverRight();
    xdotool({u"keydown"_s, u"Escape"_s});
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
}

TEST_F(OverlayInputTest, keepsNoModifierThatIsHeldAsItEnds)
{
    start(outputs());
    const Process &process = coverRight();
    xdotool({u"keydown"_s, u"Control_L"_s});
    desktop->server().switchOff(u"DUMMY1"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(isInputFree(display));
}

const QRect menuArea{700, 200, 150, 200};

TEST_F(OverlayInputTest, coversAnOpenMenuAndTakesOverWhenThatCloses)
{
    start(sideBySide());
    OpenMenu menu(display, menuArea);
    const Process &process = coverRight();
    press(u"a"_s);
    ASSERT_TRUE(waitFor([&] { return menu.isOpen() && menu.keys() == 1; })); // it holds the input
    click({1000, 500});
    ASSERT_TRUE(waitFor([&] { return !menu.isOpen(); }));
    ASSERT_TRUE(waitFor([this] { return !isInputFree(display); })); // ours now
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
    EXPECT_FALSE(process.output().contains("press 360 400")); // the menu's
}

TEST_F(OverlayInputTest, aMenuThatStaysOpenForLongGivesPointerAndKeyboardToTheOverlay)
{
    start(sideBySide());
    OpenMenu menu(display, menuArea);
    const Process &process = coverRight();
    outlastTheKeyboardLimit();
    click({1000, 500});
    ASSERT_TRUE(waitFor([&] { return !menu.isOpen(); }));
    ASSERT_TRUE(waitFor([this] { return !isInputFree(display); }));
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

/// Holds the keyboard alone.
class KeyboardHolder {
public:
    explicit KeyboardHolder(const QByteArray &display)
        : m_connection(display)
    {
        auto *const raw = m_connection.raw();
        const XReply<xcb_grab_keyboard_reply_t> keyboard(
            xcb_grab_keyboard_reply(raw,
                                    xcb_grab_keyboard(raw, 0, m_connection.root(), XCB_CURRENT_TIME,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                    nullptr));
        EXPECT_EQ(keyboard->status, XCB_GRAB_STATUS_SUCCESS);
    }

    void letGo() const
    {
        xcb_ungrab_keyboard(m_connection.raw(), XCB_CURRENT_TIME);
        m_connection.finish();
    }

private:
    XConnection m_connection;
};

TEST_F(OverlayInputTest, isServedByThePointerAloneWhereTheKeyboardIsHeld)
{
    start(sideBySide());
    const KeyboardHolder holder(display);
    const Process &process = coverRight();
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    outlastTheKeyboardLimit();
    const auto before = wakeUps(process.pid());
    outlastTheKeyboardLimit();
    EXPECT_LT(wakeUps(process.pid()) - before, 100); // it no longer asks fifty times a second
}

TEST_F(OverlayInputTest, hasTheKeyboardHoweverLateItIsLetGo)
{
    start(sideBySide());
    const KeyboardHolder holder(display);
    const Process &process = coverRight();
    outlastTheKeyboardLimit();
    const auto other = PlainWindow::shown(display, {100, 100, 100, 100});
    other.takeFocus();
    holder.letGo();
    ASSERT_TRUE(waitFor([this] { return !isInputFree(display); }));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

TEST_F(OverlayInputTest, hasTheKeyboardAtAPressWhenItWasLetGo)
{
    start(sideBySide());
    const KeyboardHolder holder(display);
    const Process &process = coverRight();
    outlastTheKeyboardLimit(); // from now on it is asked for so seldom that the press comes first
    const auto other = PlainWindow::shown(display, {100, 100, 100, 100});
    other.takeFocus();
    holder.letGo();
    click({740, 300});
    ASSERT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

TEST_F(OverlayInputTest, isUncoveredThoughAnotherProgramNeverLetsGoOfTheInput)
{
    start(outputs());
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.takeFocus();
    OpenMenu menu(display, menuArea);
    const Process &process = coverRight();
    outlastTheKeyboardLimit();
    desktop->server().switchOff(u"DUMMY1"_s);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(menu.isOpen());
}

TEST_F(OverlayInputTest, rests)
{
    start(sideBySide());
    const Process &process = coverRight();
    press(u"a"_s);
    ASSERT_TRUE(says(process, "key A"));
    const auto before = wakeUps(process.pid());
    outlastTheKeyboardLimit();
    EXPECT_LT(wakeUps(process.pid()) - before, 20);
}

} // namespace
} // namespace lumacap::harness
