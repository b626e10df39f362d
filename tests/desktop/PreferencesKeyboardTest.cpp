#include "PreferencesFixture.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// The preferences window without a mouse, and as assistive technology sees it.
struct PreferencesKeyboardTest : PreferencesFixture { };

TEST_F(PreferencesKeyboardTest, everythingIsReachedAndUsedByKeyboard)
{
    startWith();
    openWindow();
    tabTo(u"Lancer au demarrage"_s);
    tabTo(u"Plein ecran"_s);
    press(u"space"_s);
    ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));
    press(u"super+a"_s);
    ASSERT_TRUE(comes(u"⌘A"_s));
    tabTo(u"Validation auto"_s);
    press(u"space"_s);
    EXPECT_TRUE(comesToBeStored(u"autoConfirmSelection"_s, u"true"_s));
    tabTo(u"Cadre fenetre"_s);
    press(u"space"_s);
    ASSERT_TRUE(comes(u"Auto"_s));
    tabTo(u"Auto"_s);
    press(u"Down"_s);
    EXPECT_TRUE(comesToBeStored(u"defaultFrameBackground"_s, u"ocean"_s));
    tabTo(u"Presse-papier"_s);
    press(u"space"_s);
    EXPECT_TRUE(comesToBeStored(u"copyToClipboard"_s, u"false"_s));
    tabTo(u"Fichier"_s);
    press(u"space"_s);
    ASSERT_TRUE(comes(u"PNG"_s));
    tabTo(u"Choisir..."_s);
    tabTo(u"PNG"_s);
    press(u"Right"_s);
    EXPECT_TRUE(comesToBeStored(u"imageFormat"_s, u"jpeg"_s));
    press(u"shift+Tab"_s);
    EXPECT_TRUE(waitFor([this] { return focused() == u"Choisir..."_s; }));
}

TEST_F(PreferencesKeyboardTest, aFolderIsChosenByKeyboard)
{
    startWith({{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, u"/nowhere/at/all"_s}});
    const QString chosen = desktop->folder(u"pictures of mine"_s);
    openWindow();
    tabTo(u"Choisir..."_s);
    press(u"space"_s);
    ASSERT_TRUE(waitFor([this] { return windows().size() == 1 && !isInFront(); }));
    input({u"type"_s, chosen});
    press(u"Return"_s);
    EXPECT_TRUE(comesToBeStored(u"saveDirectory"_s, chosen));
    EXPECT_TRUE(comes(u"pictures of mine"_s));
    EXPECT_TRUE(waitFor([this] { return isInFront(); }));
}

TEST_F(PreferencesKeyboardTest, aCancelledFolderChangesNothing)
{
    startWith({{u"saveToFile"_s, u"true"_s}});
    openWindow();
    tabTo(u"Choisir..."_s);
    press(u"space"_s);
    ASSERT_TRUE(waitFor([this] { return !isInFront(); }));
    press(u"Escape"_s);
    EXPECT_TRUE(waitFor([this] { return isInFront(); }));
    EXPECT_EQ(stored(u"saveDirectory"_s), std::nullopt);
}

TEST_F(PreferencesKeyboardTest, everyControlHasARoleANameAndAState)
{
    startWith({{u"saveToFile"_s, u"true"_s}, {u"defaultShowFrame"_s, u"true"_s}});
    openWindow();
    std::vector<std::string> found;
    for (const AccessibleControl &control : controls().all()) {
        EXPECT_NE(control.role, u"unknown"_s) << control.name.toStdString();
        EXPECT_NE(control.role, u"invalid"_s) << control.name.toStdString();
        EXPECT_TRUE(control.isEnabled) << control.name.toStdString();
        const bool isNamed = !control.name.isEmpty();
        EXPECT_TRUE(isNamed || control.role == u"filler"_s) << control.role.toStdString();
        if (control.role == u"filler"_s || control.role == u"label"_s)
            continue;
        found.push_back(
            (control.role + u": "_s + control.name + (control.isChecked ? u" *"_s : QString()))
                .toStdString());
    }
    EXPECT_THAT(
        found,
        testing::ElementsAre("frame: Lumacap", "panel: General", "check box: Lancer au demarrage",
                             "panel: Raccourcis clavier", "push button: Plein ecran",
                             "push button: Selection", "panel: Capture",
                             "check box: Validation auto", "check box: Cadre fenetre *",
                             "panel: Theme de fond", "radio button: Auto *", "radio button: Sombre",
                             "radio button: Clair", "radio button: Océan", "radio button: Couchant",
                             "radio button: Journal", "panel: Sortie", "check box: Presse-papier *",
                             "check box: Fichier *", "push button: Choisir...", "panel: Format",
                             "radio button: PNG *", "radio button: JPEG", "radio button: TIFF"));
}

} // namespace
} // namespace lumacap::harness
