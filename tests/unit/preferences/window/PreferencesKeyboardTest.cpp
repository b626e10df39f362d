#include "Preferences.h"

#include "Keys.h"
#include "preferences/window/PreferencesView.h"
#include "preferences/window/SectionColumn.h"

#include <QAbstractButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class PreferencesKeyboardTest : public PreferencesTest {
protected:
    PreferencesKeyboardTest()
    {
        std::ignore = m_defaults.set(u"defaultShowFrame"_s, true);
        std::ignore = m_defaults.set(u"saveToFile"_s, true);
        show();
    }

    void press(int key) const { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); }
    static QString focused()
    {
        const QWidget *const widget = QApplication::focusWidget();
        return widget == nullptr ? QString() : widget->accessibleName();
    }
    /// Names of what Tab leads to, until it begins again.
    QStringList tabOrder() const
    {
        QStringList names;
        while (names.size() < 20) {
            QTest::keyClick(QApplication::focusWidget() != nullptr ? QApplication::focusWidget()
                                                                   : m_controller->window(),
                            Qt::Key_Tab);
            if (!names.isEmpty() && focused() == names.first())
                break;
            names.append(focused());
        }
        return names;
    }
};

TEST_F(PreferencesKeyboardTest, tabLeadsThroughAllControlsInOrder)
{
    EXPECT_EQ(tabOrder(),
              (QStringList{u"Lancer au demarrage"_s, u"Plein ecran"_s, u"Selection"_s,
                           u"Validation auto"_s, u"Cadre fenetre"_s, u"Auto"_s, u"Presse-papier"_s,
                           u"Fichier"_s, u"Choisir..."_s, u"PNG"_s}));
}

TEST_F(PreferencesKeyboardTest, tabLeavesOutWhatIsHidden)
{
    click(switchOf("defaultShowFrame"));
    click(switchOf("saveToFile"));
    EXPECT_EQ(
        tabOrder(),
        (QStringList{u"Lancer au demarrage"_s, u"Plein ecran"_s, u"Selection"_s,
                     u"Validation auto"_s, u"Cadre fenetre"_s, u"Presse-papier"_s, u"Fichier"_s}));
}

TEST_F(PreferencesKeyboardTest, whatTabReachesIsInView)
{
    switchOf("launchAtLogin").setFocus(Qt::TabFocusReason);
    while (focused() != u"PNG"_s) {
        press(Qt::Key_Tab);
        const QWidget &reached = *QApplication::focusWidget();
        EXPECT_EQ(reached.visibleRegion().boundingRect(), reached.rect())
            << focused().toStdString();
    }
}

TEST_F(PreferencesKeyboardTest, spaceTurnsASwitch)
{
    switchOf("copyToClipboard").setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_FALSE(m_preferences.copyToClipboard());
    press(Qt::Key_Space);
    EXPECT_TRUE(m_preferences.copyToClipboard());
}

TEST_F(PreferencesKeyboardTest, spaceOpensTheFolderPanel)
{
    control<QAbstractButton>("chooseSaveDirectory").setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(m_folderPanel.starts.size(), 1);
}

TEST_F(PreferencesKeyboardTest, arrowsGoThroughTheFormatsAndStopAtTheEnds)
{
    choices("imageFormat").choices().front()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Left);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_FALSE(m_defaults.holds(u"imageFormat"_s));
    press(Qt::Key_Right);
    EXPECT_EQ(m_defaults.string(u"imageFormat"_s), u"jpeg"_s);
    EXPECT_EQ(focused(), u"JPEG"_s);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(m_defaults.string(u"imageFormat"_s), u"tiff"_s);
    press(Qt::Key_Left);
    EXPECT_EQ(m_defaults.string(u"imageFormat"_s), u"jpeg"_s);
}

TEST_F(PreferencesKeyboardTest, arrowsGoThroughTheTilesInBothDirections)
{
    choices("defaultFrameBackground").choices().front()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"ocean"_s);
    press(Qt::Key_Right);
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"sunset"_s);
    press(Qt::Key_Up);
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"darkSlate"_s);
    press(Qt::Key_Up);
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"darkSlate"_s) << "nothing above";
    EXPECT_EQ(focused(), u"Sombre"_s);
}

TEST_F(PreferencesKeyboardTest, aShortcutIsRecordedWithoutTheMouse)
{
    recorder("fullScreenHotkey").setFocus(Qt::TabFocusReason);
    type(spaceKey);
    QCoreApplication::processEvents();
    type(letterA, Qt::MetaModifier);
    EXPECT_EQ(m_preferences.fullScreenHotkey(), (KeyCombo{0, carbon::cmdKey}));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"Selection"_s);
}

} // namespace
} // namespace lumacap::tests
