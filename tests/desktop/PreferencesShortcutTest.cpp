#include "PreferencesFixture.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr std::uint8_t five = 14;
constexpr std::uint8_t print = 107;
constexpr std::uint8_t pause = 127;
constexpr Shortcut controlFive{five, XCB_MOD_MASK_CONTROL};

/// Shortcuts that are recorded in the preferences window.
struct PreferencesShortcutTest : PreferencesFixture {
    void recordFullScreen(const std::vector<std::uint8_t> &modifiers, std::uint8_t code)
    {
        use(u"Plein ecran"_s);
        ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));
        pressKeys(modifiers, code);
        ASSERT_TRUE(goes(u"Appuyez sur un raccourci..."_s));
    }
    bool isInMenu(TrayHost &tray, const QString &label)
    {
        return waitFor([&] {
            const auto menu = tray.menu();
            return std::ranges::any_of(
                menu, [&](const MenuEntry &entry) { return entry.label == label; });
        });
    }
};

TEST_F(PreferencesShortcutTest, aRecordedOneWorksAtOnceAndAfterARestart)
{
    startWith();
    TrayHost tray(desktop->bus().address());
    openWindow();
    recordFullScreen({key::controlLeft}, five);

    EXPECT_TRUE(controls().shows(u"⌃5"_s));
    EXPECT_TRUE(isInMenu(tray, u"Capture plein ecran  (⌃5)"_s));
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), controlFive); }));
    EXPECT_TRUE(isFree(display(), fullScreenShortcut)) << "the old one";
    pressKeys({key::controlLeft}, five);
    EXPECT_TRUE(captures(1));
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), selectionShortcut); }));

    agent.reset();
    startAgentWith(controlFive);
    pressKeys({key::controlLeft}, five);
    EXPECT_TRUE(captures(1));
    EXPECT_TRUE(isInMenu(tray, u"Capture plein ecran  (⌃5)"_s));
    EXPECT_TRUE(isInMenu(tray, u"Capture selection  (⌃⇧2)"_s));
}

TEST_F(PreferencesShortcutTest, thePrintKeyIsAShortcut)
{
    startWith();
    openWindow();
    recordFullScreen({key::superLeft}, print); // alone the window manager has it
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), {print, XCB_MOD_MASK_4}); }));
    pressKeys({key::superLeft}, print);
    EXPECT_TRUE(captures(1));
}

TEST_F(PreferencesShortcutTest, aKeyBesideTheFunctionKeysIsAShortcutAlone)
{
    startWith();
    openWindow();
    recordFullScreen({}, pause);
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), {pause, 0}); }));
    pressKeys({}, pause);
    EXPECT_TRUE(captures(1));
}

TEST_F(PreferencesShortcutTest, ourOwnAreRecordedAndDoNotFire)
{
    startWith();
    openWindow();
    use(u"Selection"_s);
    ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));
    pressFullScreen();
    EXPECT_TRUE(goes(u"Appuyez sur un raccourci..."_s));
    EXPECT_TRUE(goes(u"⌃⇧2"_s));
    EXPECT_FALSE(waitFor([this] { return clipboard->changes() > 0; }, 300ms));
    EXPECT_EQ(stored(u"fullScreenHotkey"_s), std::nullopt);
    EXPECT_NE(stored(u"selectionHotkey"_s), std::nullopt);
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), fullScreenShortcut); }));
}

TEST_F(PreferencesShortcutTest, theyFireAgainAfterEscape)
{
    startWith();
    openWindow();
    use(u"Plein ecran"_s);
    ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));
    ASSERT_TRUE(waitFor([this] { return isFree(display(), fullScreenShortcut); }));
    press(u"super+Escape"_s);
    EXPECT_TRUE(goes(u"Appuyez sur un raccourci..."_s));
    EXPECT_EQ(stored(u"fullScreenHotkey"_s), std::nullopt);
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), fullScreenShortcut); }));
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(PreferencesShortcutTest, theyFireAgainWhenTheWindowIsClosedMeanwhile)
{
    startWith();
    openWindow();
    use(u"Plein ecran"_s);
    ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));
    ASSERT_EQ(
        desktop->ask({u"xdotool"_s, u"windowclose"_s, QString::number(windows().front())}).ending,
        Ending{});
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), fullScreenShortcut); }));
}

TEST_F(PreferencesShortcutTest, aKeyThatIsStillHeldDoesNotFireWhatItJustBecame)
{
    startWith();
    openWindow();
    ASSERT_EQ(desktop->ask({u"xset"_s, u"r"_s, u"rate"_s, u"20"_s, u"100"_s}).ending, Ending{});
    use(u"Plein ecran"_s);
    ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));
    holdKeys({key::controlLeft, five});
    EXPECT_TRUE(goes(u"Appuyez sur un raccourci..."_s));
    EXPECT_FALSE(waitFor([this] { return clipboard->changes() > 0; }, 400ms));
    releaseKeys({five, key::controlLeft});
    EXPECT_TRUE(waitFor([this] { return !isFree(display(), controlFive); }));
    EXPECT_EQ(clipboard->changes(), 0);
}

TEST_F(PreferencesShortcutTest, thePlaceOfAKeyIsRecordedUnderAnyLayout)
{
    startWith();
    ASSERT_EQ(desktop->ask({u"setxkbmap"_s, u"fr"_s}).ending, Ending{});
    openWindow();
    recordFullScreen({key::superLeft}, key::letterA); // which bears a Q here
    EXPECT_TRUE(controls().shows(u"⌘A"_s));
}

} // namespace
} // namespace lumacap::harness
