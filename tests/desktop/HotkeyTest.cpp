#include "HotkeyFixture.h"
#include "harness/KeyboardState.h"
#include "harness/PlainWindow.h"
#include "harness/Rest.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The shortcuts while another program's window is in front.
struct HotkeyTest : HotkeyFixture { };

constexpr std::uint8_t capsLock = 0x02;
constexpr std::uint8_t numLock = 0x10;
constexpr std::uint8_t scrollLock = 0x20;
/// As most keyboards of today don't have it any more.
const QStringList aScrollLockThatLocks{u"xmodmap"_s, u"-e"_s, u"add mod3 = Scroll_Lock"_s};

TEST_F(HotkeyTest, takesBothCaptures)
{
    start();
    const auto terminal = PlainWindow::shown(display(), {100, 100, 300, 200});
    terminal.takeFocus();
    pressFullScreen();
    EXPECT_TRUE(captures(1));
    selectByShortcut();
    EXPECT_TRUE(captures(2));
    EXPECT_TRUE(terminal.hasFocus());
}

TEST_F(HotkeyTest, takesACaptureWithoutAWindow)
{
    startDesktop({.server = {.size = {640, 480}}, .windowManager = WindowManager::Nobody});
    startAgentWith(fullScreenShortcut);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyTest, firesUnderEveryCombinationOfLocks)
{
    startDesktop();
    ASSERT_EQ(desktop->ask(aScrollLockThatLocks).ending, Ending{});
    startAgentWith(fullScreenShortcut);
    const auto terminal = PlainWindow::shown(display(), {100, 100, 300, 200});
    terminal.takeFocus();
    int presses = 0;
    for (const int caps : {0, 1}) {
        for (const int num : {0, 1}) {
            for (const int scroll : {0, 1}) {
                const int locks = caps * capsLock + num * numLock + scroll * scrollLock;
                setLocks(display(), static_cast<std::uint8_t>(locks));
                pressFullScreen();
                EXPECT_TRUE(captures(++presses)) << "caps, num, scroll " << caps << num << scroll;
            }
        }
    }
    setLocks(display(), capsLock | numLock);
    selectByShortcut();
    EXPECT_TRUE(captures(presses + 1));
}

TEST_F(HotkeyTest, firesUnderEveryLayout)
{
    start();
    int presses = 0;
    for (const QString &layout : {u"us"_s, u"fr"_s, u"de"_s}) {
        ASSERT_EQ(desktop->ask({u"setxkbmap"_s, layout}).ending, Ending{});
        pressFullScreen();
        EXPECT_TRUE(captures(++presses)) << layout.toStdString();
        selectByShortcut();
        EXPECT_TRUE(captures(++presses)) << layout.toStdString();
    }
}

TEST_F(HotkeyTest, firesUnderASecondLayoutOfTheKeyboard)
{
    start();
    ASSERT_EQ(desktop->ask({u"setxkbmap"_s, u"us,fr"_s}).ending, Ending{});
    setLayout(display(), 1);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
    setLocks(display(), capsLock);
    pressFullScreen();
    EXPECT_TRUE(captures(2));
}

TEST_F(HotkeyTest, isRegisteredUnderAKeyboardThatStartsWithAnotherLayout)
{
    startDesktop();
    ASSERT_EQ(desktop->ask({u"setxkbmap"_s, u"fr,us"_s}).ending, Ending{});
    setLayout(display(), 1);
    startAgentWith(fullScreenShortcut);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyTest, firesOnceThoughTheKeyIsHeld)
{
    start();
    ASSERT_EQ(desktop->ask({u"xset"_s, u"r"_s, u"rate"_s, u"20"_s, u"100"_s}).ending, Ending{});
    holdKeys({key::controlLeft, key::shiftLeft, key::one});
    ASSERT_TRUE(captures(1));
    EXPECT_FALSE(waitFor([this] { return clipboard->changes() > 1; }, 400ms));
    releaseKeys({key::one});
    pressFullScreen();
    EXPECT_TRUE(captures(2));
}

TEST_F(HotkeyTest, firesForASecondKeyWhileTheFirstIsHeld)
{
    start();
    holdKeys({key::controlLeft, key::shiftLeft, key::two});
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    holdKeys({key::one});
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyTest, leavesOtherCombinationsToTheWindow)
{
    start();
    auto terminal = PlainWindow::shown(display(), {100, 100, 300, 200});
    terminal.listen();
    terminal.takeFocus();
    pressKeys({}, key::one);
    pressKeys({key::controlLeft}, key::one);
    pressKeys({key::shiftLeft}, key::one);
    pressKeys({key::controlLeft, key::shiftLeft, key::altLeft}, key::one);
    constexpr int pressesAndReleases = 2 * (1 + 2 + 2 + 4);
    EXPECT_TRUE(waitFor([&] { return terminal.keyEvents() == pressesAndReleases; }));
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyTest, aSelectionIsNotBegunAgainWhileOneIsUpButTheScreenIsCaptured)
{
    start();
    pressSelection();
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    // A press at the very moment in which the overlay takes the keyboard would be nobody's.
    ASSERT_TRUE(comesToRest(agent->process().pid(), 1s, 20s));
    drag({100, 100}, {300, 250});
    pressSelection();
    pressFullScreen();
    EXPECT_TRUE(captures(1));
    EXPECT_EQ(clipboardPicture(*desktop).size(), QSize(800, 600));
    EXPECT_TRUE(overlayIsUp());
    press(u"Return"_s); // what was selected before is still selected
    EXPECT_TRUE(captures(2));
    EXPECT_EQ(clipboardPicture(*desktop).size(), QSize(200, 150));
    EXPECT_FALSE(overlayIsUp());
}

TEST_F(HotkeyTest, capturesAScreenThatTheOverlayHidesAltogether)
{
    startDesktop(smallScreen());
    startAgentWith(fullScreenShortcut);
    pressSelection();
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    // A press at the very moment in which the overlay takes the keyboard would be nobody's.
    ASSERT_TRUE(comesToRest(agent->process().pid(), 1s, 20s));
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyTest, doesNotWakeTheAgentForKeysThatAreTyped)
{
    start();
    auto terminal = PlainWindow::shown(display(), {100, 100, 300, 200});
    terminal.listen();
    terminal.takeFocus();
    const auto type = [this](int letters) {
        for (int letter = 0; letter < letters; letter += 10)
            input(QStringList{u"key"_s} + QStringList(10, QString::number(key::letterA)));
    };
    type(10); // the server makes much of the first key of a keyboard
    const pid_t process = agent->process().pid();
    ASSERT_TRUE(comesToRest(process, 300ms));
    const std::int64_t before = wakeUps(process);
    type(50);
    ASSERT_TRUE(waitFor([&] { return terminal.keyEvents() == 2 * 60; }));
    EXPECT_EQ(wakeUps(process), before);
}

} // namespace
} // namespace lumacap::harness
