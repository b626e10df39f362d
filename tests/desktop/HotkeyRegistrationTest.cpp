#include "HotkeyFixture.h"
#include "harness/WaitFor.h"

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// Which shortcuts the agent has, and when.
struct HotkeyRegistrationTest : HotkeyFixture {
    bool run(const QStringList &command) { return desktop->ask(command).ending == Ending{}; }
};

// As settings store a shortcut.
constexpr int virtualF = 3;
constexpr int commandAndOption = 0x0900;

TEST_F(HotkeyRegistrationTest, aShortcutThatAnotherProgramHasIsSilentAndTheOtherWorks)
{
    startDesktop();
    HeldShortcut other(display(), fullScreenShortcut);
    startAgentWith(selectionShortcut);
    pressFullScreen();
    EXPECT_TRUE(waitFor([&] { return other.presses() == 1; }));
    selectByShortcut();
    EXPECT_TRUE(captures(1));
    EXPECT_TRUE(agent->process().output().isEmpty()) << agent->process().output().toStdString();
    EXPECT_TRUE(agent->process().errors().isEmpty()) << agent->process().errors().toStdString();
}

TEST_F(HotkeyRegistrationTest, ofAShortcutThatIsTakenUnderOneLockNothingIsTaken)
{
    startDesktop();
    Shortcut underCapsLock = fullScreenShortcut;
    underCapsLock.modifiers |= XCB_MOD_MASK_LOCK;
    const HeldShortcut other(display(), underCapsLock);
    startAgentWith(selectionShortcut);
    EXPECT_TRUE(waitFor([this] { return isFree(display(), fullScreenShortcut); }));
}

TEST_F(HotkeyRegistrationTest, aStoredShortcutIsTheOneThatWorksFromTheStart)
{
    startDesktop();
    set({{u"fullScreenHotkey"_s, storedHotkey(virtualF, commandAndOption)}});
    startAgentWith({key::letterF, XCB_MOD_MASK_1 | XCB_MOD_MASK_4});
    EXPECT_TRUE(isFree(display(), fullScreenShortcut));
    pressKeys({key::superLeft, key::altLeft}, key::letterF);
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyRegistrationTest, ofTwoThatAreTheSameTheFirstWorks)
{
    startDesktop();
    const QString same = storedHotkey(virtualF, commandAndOption);
    set({{u"fullScreenHotkey"_s, same}, {u"selectionHotkey"_s, same}});
    startAgentWith({key::letterF, XCB_MOD_MASK_1 | XCB_MOD_MASK_4});
    pressKeys({key::superLeft, key::altLeft}, key::letterF);
    EXPECT_TRUE(captures(1));
    EXPECT_FALSE(overlayIsUp());
}

TEST_F(HotkeyRegistrationTest, aStoredKeyThatNoKeyboardHasIsSilent)
{
    startDesktop();
    set({{u"fullScreenHotkey"_s, storedHotkey(0x1234, commandAndOption)}});
    startAgentWith(selectionShortcut);
    selectByShortcut();
    EXPECT_TRUE(captures(1));
    EXPECT_TRUE(agent->process().errors().isEmpty()) << agent->process().errors().toStdString();
}

TEST_F(HotkeyRegistrationTest, aShortcutFollowsItsModifierToAnotherPlaceOfTheKeyboard)
{
    startDesktop();
    set({{u"fullScreenHotkey"_s, storedHotkey(virtualF, commandAndOption)}});
    startAgentWith({key::letterF, XCB_MOD_MASK_1 | XCB_MOD_MASK_4});
    ASSERT_TRUE(run({u"xmodmap"_s, u"-e"_s, u"clear mod4"_s, u"-e"_s, u"clear mod3"_s, u"-e"_s,
                     u"add mod3 = Super_L"_s}));
    ASSERT_TRUE(waitFor(
        [this] { return !isFree(display(), {key::letterF, XCB_MOD_MASK_1 | XCB_MOD_MASK_3}); }));
    EXPECT_TRUE(isFree(display(), {key::letterF, XCB_MOD_MASK_1 | XCB_MOD_MASK_4}));
    pressKeys({key::superLeft, key::altLeft}, key::letterF);
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyRegistrationTest, aNewLockKeyIsAllowedFor)
{
    start();
    Shortcut underScrollLock = fullScreenShortcut;
    underScrollLock.modifiers |= XCB_MOD_MASK_3;
    ASSERT_TRUE(isFree(display(), underScrollLock));
    ASSERT_TRUE(run({u"xmodmap"_s, u"-e"_s, u"add mod3 = Scroll_Lock"_s}));
    EXPECT_TRUE(waitFor([&] { return !isFree(display(), underScrollLock); }));
}

TEST_F(HotkeyRegistrationTest, leavesNothingBehind)
{
    start();
    ASSERT_TRUE(agent->activate(u"quit"_s));
    ASSERT_EQ(agent->process().waitForEnd(usualLimit), Ending{});
    for (unsigned modifiers = 0; modifiers < 0x100; ++modifiers) {
        EXPECT_TRUE(isFree(display(), {key::one, static_cast<std::uint16_t>(modifiers)}));
        EXPECT_TRUE(isFree(display(), {key::two, static_cast<std::uint16_t>(modifiers)}));
    }
}

TEST_F(HotkeyRegistrationTest, comesBackWithTheNextAgent)
{
    start();
    agent->process().send(SIGKILL);
    ASSERT_TRUE(waitFor([this] { return isFree(display(), selectionShortcut); }));
    startAgentWith(fullScreenShortcut);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(HotkeyRegistrationTest, anotherProgramsShortcutIsOursAtTheNextStartOnceItIsFree)
{
    startDesktop();
    {
        const HeldShortcut other(display(), fullScreenShortcut);
        startAgentWith(selectionShortcut);
        ASSERT_TRUE(agent->activate(u"quit"_s));
        ASSERT_EQ(agent->process().waitForEnd(usualLimit), Ending{});
    }
    startAgentWith(fullScreenShortcut);
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

} // namespace
} // namespace lumacap::harness
