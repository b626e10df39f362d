#include "Preferences.h"

#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "preferences/look/PrefsText.h"
#include "preferences/storage/ImageFormat.h"

#include <QAbstractButton>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

struct PreferencesViewTest : PreferencesTest {
    bool isShown(const char *name) const { return control<QWidget>(name).isVisible(); }
};

class EverySwitch : public PreferencesTest, public testing::WithParamInterface<const char *> { };

TEST_P(EverySwitch, writesItsKeyTheMomentItIsTurned)
{
    const QString key = QString::fromLatin1(GetParam());
    show();
    EXPECT_FALSE(m_defaults.holds(key));
    const bool before = switchOf(GetParam()).isChecked();
    click(switchOf(GetParam()));
    EXPECT_TRUE(m_defaults.holds(key));
    EXPECT_EQ(m_defaults.boolean(key), !before);
    click(switchOf(GetParam()));
    EXPECT_EQ(m_defaults.boolean(key), before);
    EXPECT_EQ(m_hotkeyChanges, 0);
}

TEST_P(EverySwitch, staysAsItWasTurnedWhenTheWriteFails)
{
    show();
    const bool before = switchOf(GetParam()).isChecked();
    m_defaults.isReadOnly = true;
    click(switchOf(GetParam()));
    EXPECT_EQ(switchOf(GetParam()).isChecked(), !before);
    EXPECT_FALSE(m_defaults.holds(QString::fromLatin1(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(PreferencesView, EverySwitch,
                         testing::Values("autoConfirmSelection", "defaultShowFrame",
                                         "copyToClipboard", "saveToFile"),
                         [](const auto &named) { return named.param; });

TEST_F(PreferencesViewTest, showsTheDefaultsOfAFreshStoreAndWritesNothing)
{
    show();
    EXPECT_FALSE(switchOf("launchAtLogin").isChecked());
    EXPECT_FALSE(switchOf("autoConfirmSelection").isChecked());
    EXPECT_FALSE(switchOf("defaultShowFrame").isChecked());
    EXPECT_TRUE(switchOf("copyToClipboard").isChecked());
    EXPECT_FALSE(switchOf("saveToFile").isChecked());
    EXPECT_EQ(recorder("fullScreenHotkey").keyCombo().displayString(), u"⌃⇧1"_s);
    EXPECT_EQ(recorder("selectionHotkey").keyCombo().displayString(), u"⌃⇧2"_s);
    EXPECT_EQ(choices("defaultFrameBackground").current(), 0);
    EXPECT_EQ(choices("imageFormat").current(), 0);
    for (const QString &key :
         {u"fullScreenHotkey"_s, u"selectionHotkey"_s, u"saveToFile"_s, u"copyToClipboard"_s,
          u"saveDirectory"_s, u"imageFormat"_s, u"autoConfirmSelection"_s, u"defaultShowFrame"_s,
          u"defaultFrameBackground"_s})
        EXPECT_FALSE(m_defaults.holds(key)) << key.toStdString();
}

TEST_F(PreferencesViewTest, showsWhatIsStored)
{
    std::ignore = m_defaults.set(u"copyToClipboard"_s, false);
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    std::ignore = m_defaults.set(u"imageFormat"_s, u"tiff"_s);
    std::ignore = m_defaults.set(u"defaultFrameBackground"_s, u"sunset"_s);
    std::ignore = m_loginItem.registerItem();
    show();
    EXPECT_FALSE(switchOf("copyToClipboard").isChecked());
    EXPECT_TRUE(switchOf("saveToFile").isChecked());
    EXPECT_EQ(choices("imageFormat").current(), 2);
    EXPECT_EQ(choices("defaultFrameBackground").current(), 4);
    EXPECT_TRUE(switchOf("launchAtLogin").isChecked());
    EXPECT_EQ(switchOf("launchAtLogin").position(), 1);
}

TEST_F(PreferencesViewTest, anUnknownBackgroundIsTheFirst)
{
    std::ignore = m_defaults.set(u"defaultFrameBackground"_s, u"Sunset"_s);
    show();
    EXPECT_EQ(choices("defaultFrameBackground").current(), 0);
}

TEST_F(PreferencesViewTest, fileRevealsFolderAndFormatAtOnceAndKeepsThemWhileHidden)
{
    std::ignore = m_defaults.set(u"saveDirectory"_s, u"/tmp/Captures"_s);
    show();
    EXPECT_FALSE(isShown("chooseSaveDirectory"));
    EXPECT_FALSE(isShown("imageFormat"));
    click(switchOf("saveToFile"));
    EXPECT_TRUE(isShown("chooseSaveDirectory"));
    EXPECT_TRUE(isShown("imageFormat"));
    choose("imageFormat", 1);
    click(switchOf("saveToFile"));
    EXPECT_FALSE(isShown("chooseSaveDirectory"));
    EXPECT_FALSE(isShown("imageFormat"));
    EXPECT_EQ(m_defaults.string(u"saveDirectory"_s), u"/tmp/Captures"_s);
    EXPECT_EQ(m_defaults.string(u"imageFormat"_s), u"jpeg"_s);
}

TEST_F(PreferencesViewTest, theFrameRevealsItsBackgroundsAndKeepsTheirChoiceWhileHidden)
{
    show();
    EXPECT_FALSE(isShown("defaultFrameBackground"));
    click(switchOf("defaultShowFrame"));
    EXPECT_TRUE(isShown("defaultFrameBackground"));
    choose("defaultFrameBackground", 3);
    click(switchOf("defaultShowFrame"));
    EXPECT_FALSE(isShown("defaultFrameBackground"));
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"ocean"_s);
}

TEST_F(PreferencesViewTest, whatASwitchRevealsIsScrolledIntoView)
{
    show();
    click(switchOf("saveToFile"));
    const QWidget &picker = control<QWidget>("imageFormat");
    EXPECT_EQ(picker.visibleRegion().boundingRect(), picker.rect());
}

TEST_F(PreferencesViewTest, everyBackgroundIsStoredByItsRawValue)
{
    std::ignore = m_defaults.set(u"defaultShowFrame"_s, true);
    show();
    for (const std::size_t index : {1U, 2U, 3U, 4U, 5U, 0U}) {
        choose("defaultFrameBackground", index);
        EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s),
                  QString(frameBackgroundStyles.at(index).rawValue));
    }
    EXPECT_EQ(m_hotkeyChanges, 0);
}

TEST_F(PreferencesViewTest, everyFormatIsStoredByItsRawValue)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    show();
    for (const std::size_t index : {1U, 2U, 0U}) {
        choose("imageFormat", index);
        EXPECT_EQ(m_defaults.string(u"imageFormat"_s), QString(imageFormats.at(index).rawValue));
    }
    EXPECT_EQ(m_hotkeyChanges, 0);
}

TEST_F(PreferencesViewTest, theCurrentChoiceClickedAgainIsNoChange)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    show();
    choose("imageFormat", 0);
    EXPECT_FALSE(m_defaults.holds(u"imageFormat"_s));
    EXPECT_TRUE(choices("imageFormat").choices().front()->isChecked());
}

TEST_F(PreferencesViewTest, aRecordedShortcutIsStoredAndReportedOnce)
{
    show();
    record("fullScreenHotkey", Qt::MetaModifier);
    EXPECT_EQ(m_preferences.fullScreenHotkey(), (KeyCombo{0, carbon::cmdKey}));
    EXPECT_EQ(m_hotkeyChanges, 1);
    EXPECT_EQ(m_fullScreenAtChange, (KeyCombo{0, carbon::cmdKey})) << "stored before";
    record("selectionHotkey", Qt::AltModifier);
    EXPECT_EQ(m_preferences.selectionHotkey(), (KeyCombo{0, carbon::optionKey}));
    EXPECT_EQ(m_hotkeyChanges, 2);
    record("selectionHotkey", Qt::AltModifier);
    EXPECT_EQ(m_hotkeyChanges, 2) << "the same again";
}

TEST_F(PreferencesViewTest, bothShortcutsMayBeTheSame)
{
    show();
    record("fullScreenHotkey", Qt::MetaModifier);
    record("selectionHotkey", Qt::MetaModifier);
    EXPECT_EQ(m_preferences.fullScreenHotkey(), m_preferences.selectionHotkey());
    EXPECT_EQ(m_hotkeyChanges, 2);
}

TEST_F(PreferencesViewTest, aChosenFolderIsStoredAndNamed)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    std::ignore = m_defaults.set(u"saveDirectory"_s, u"/tmp/Captures"_s);
    show();
    click(control<QAbstractButton>("chooseSaveDirectory"));
    EXPECT_EQ(m_folderPanel.starts, QStringList{u"/tmp/Captures"_s});
    EXPECT_EQ(m_folderPanel.lastWindow, m_controller->window());
    m_folderPanel.choose(u"/srv/Pictures"_s);
    EXPECT_EQ(m_defaults.string(u"saveDirectory"_s), u"/srv/Pictures"_s);
    EXPECT_EQ(control<QWidget>("saveDirectory").accessibleName(), u"Pictures"_s);

    click(control<QAbstractButton>("chooseSaveDirectory"));
    EXPECT_EQ(m_folderPanel.starts.last(), u"/srv/Pictures"_s);
    m_folderPanel.choose(u"/srv/Pictures"_s);
    EXPECT_EQ(m_defaults.string(u"saveDirectory"_s), u"/srv/Pictures"_s) << "the same again";
}

TEST_F(PreferencesViewTest, aCancelledPanelChangesNothing)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    show();
    click(control<QAbstractButton>("chooseSaveDirectory"));
    m_folderPanel.cancel();
    EXPECT_FALSE(m_defaults.holds(u"saveDirectory"_s));
}

TEST_F(PreferencesViewTest, aFolderChosenAfterTheWindowClosedChangesNothing)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    show();
    click(control<QAbstractButton>("chooseSaveDirectory"));
    close();
    m_folderPanel.choose(u"/srv/Pictures"_s);
    EXPECT_FALSE(m_defaults.holds(u"saveDirectory"_s));
}

TEST_F(PreferencesViewTest, theRootIsNamedByItsPath)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    std::ignore = m_defaults.set(u"saveDirectory"_s, u"/"_s);
    show();
    EXPECT_EQ(control<QWidget>("saveDirectory").accessibleName(), u"/"_s);
}

TEST_F(PreferencesViewTest, aFolderIsNamedOnOneLine)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    std::ignore = m_defaults.set(u"saveDirectory"_s, u"/tmp/first\nsecond"_s);
    show();
    EXPECT_EQ(control<PrefsText>("saveDirectory").shownText(), u"first second"_s);
    EXPECT_EQ(m_defaults.string(u"saveDirectory"_s), u"/tmp/first\nsecond"_s);
}

TEST_F(PreferencesViewTest, aLongNameOfAFolderLosesItsMiddle)
{
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    const QString name = u"begin"_s + QString(200, u'x') + u"end"_s;
    std::ignore = m_defaults.set(u"saveDirectory"_s, QString(u"/tmp/"_s + name));
    show();
    const auto &shown = control<PrefsText>("saveDirectory");
    EXPECT_TRUE(shown.shownText().startsWith(u"begin"_s));
    EXPECT_TRUE(shown.shownText().endsWith(u"end"_s));
    EXPECT_LT(shown.shownText().size(), name.size());
    EXPECT_EQ(shown.accessibleName(), name) << "which is read whole";
}

TEST_F(PreferencesViewTest, launchAtLoginIsTheLoginItem)
{
    show();
    click(switchOf("launchAtLogin"));
    EXPECT_TRUE(m_loginItem.isEnabled());
    click(switchOf("launchAtLogin"));
    EXPECT_FALSE(m_loginItem.isEnabled());
    EXPECT_EQ(m_hotkeyChanges, 0);
}

TEST_F(PreferencesViewTest, aRefusedLoginItemIsPrintedAndTheSwitchStays)
{
    m_loginItem.refusal = Failure{u"no room"_s};
    show();
    testing::internal::CaptureStdout();
    click(switchOf("launchAtLogin"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Launch at login error: no room\n");
    EXPECT_TRUE(switchOf("launchAtLogin").isChecked());
    EXPECT_FALSE(m_loginItem.isEnabled());
}

} // namespace
} // namespace lumacap::tests
