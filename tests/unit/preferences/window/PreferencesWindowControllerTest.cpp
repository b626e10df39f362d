#include "Preferences.h"

#include <QApplication>
#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

struct PreferencesWindowControllerTest : PreferencesTest {
    bool shows(const QString &text) const
    {
        const auto widgets = m_controller->window()->findChildren<QWidget *>();
        return std::ranges::any_of(
            widgets, [&](const QWidget *widget) { return widget->accessibleName() == text; });
    }
};

TEST_F(PreferencesWindowControllerTest, hasNoWindowBeforeItIsAskedForOne)
{
    EXPECT_EQ(m_controller->window(), nullptr);
}

TEST_F(PreferencesWindowControllerTest, opensAWindowThatNobodyResizes)
{
    show();
    const PreferencesWindow &window = *m_controller->window();
    EXPECT_EQ(window.windowTitle(), u"Lumacap"_s);
    EXPECT_EQ(window.size(), QSize(480, 580));
    EXPECT_EQ(window.minimumSize(), window.maximumSize());
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(PreferencesWindowControllerTest, opensItInTheMiddleOfTheScreen)
{
    show();
    const QWidget &window = *m_controller->window();
    const QPoint off =
        window.frameGeometry().center() - window.screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 8) << "but for its frame, which nobody knows before";
}

TEST_F(PreferencesWindowControllerTest, anOpenWindowComesToTheFrontAgain)
{
    show();
    const QPointer window = m_controller->window();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    show();
    EXPECT_EQ(m_controller->window(), window);
    EXPECT_TRUE(window->isActiveWindow());
}

TEST_F(PreferencesWindowControllerTest, aClosedWindowIsLetGo)
{
    show();
    const QPointer window = m_controller->window();
    close();
    EXPECT_TRUE(window.isNull());
}

TEST_F(PreferencesWindowControllerTest, aWindowOpenedInTheTurnOfAClosingStays)
{
    show();
    m_controller->window()->close();
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    m_controller->show();
    EXPECT_TRUE(switchOf("saveToFile").isChecked()) << "read anew";
    const QPointer opened = m_controller->window();
    QCoreApplication::processEvents();
    ASSERT_FALSE(opened.isNull());
    EXPECT_EQ(m_controller->window(), opened);
    EXPECT_TRUE(opened->isVisible());
}

TEST_F(PreferencesWindowControllerTest, reopeningReadsWhatWasChangedElsewhere)
{
    show();
    EXPECT_FALSE(switchOf("saveToFile").isChecked());
    close();
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    std::ignore = m_loginItem.registerItem();
    m_preferences.setSelectionHotkey({0, carbon::cmdKey});
    show();
    EXPECT_TRUE(switchOf("saveToFile").isChecked());
    EXPECT_TRUE(switchOf("launchAtLogin").isChecked());
    EXPECT_EQ(recorder("selectionHotkey").keyCombo(), (KeyCombo{0, carbon::cmdKey}));
}

TEST_F(PreferencesWindowControllerTest, anOpenWindowDoesNotReadAgain)
{
    show();
    std::ignore = m_defaults.set(u"saveToFile"_s, true);
    show();
    EXPECT_FALSE(switchOf("saveToFile").isChecked());
}

TEST_F(PreferencesWindowControllerTest, closingWhileAShortcutIsRecordedGivesTheOthersBack)
{
    show();
    click(recorder("fullScreenHotkey"));
    EXPECT_TRUE(m_hotkeyService.isSuspended);
    close();
    EXPECT_FALSE(m_hotkeyService.isSuspended);
}

TEST_F(PreferencesWindowControllerTest, theFooterNamesTheVersion)
{
    show();
    EXPECT_TRUE(shows(u"Lumacap v1.2.3"_s));
}

TEST_F(PreferencesWindowControllerTest, theFooterOfAProgramWithoutAVersionSaysSo)
{
    QCoreApplication::setApplicationVersion({});
    show();
    EXPECT_TRUE(shows(u"Lumacap v?"_s));
}

TEST_F(PreferencesWindowControllerTest, anotherFontIsTakenUpAtOnceWithWhatIsStored)
{
    show();
    click(switchOf("saveToFile"));
    const QFont before = QApplication::font();
    QFont larger = before;
    larger.setFamily(u"Monospace"_s);
    QApplication::setFont(larger);
    QCoreApplication::processEvents();
    EXPECT_TRUE(switchOf("saveToFile").isChecked());
    EXPECT_TRUE(switchOf("saveToFile").isVisible());
    QApplication::setFont(before);
}

TEST_F(PreferencesWindowControllerTest, anotherFontEndsARecordingAndGivesTheShortcutsBack)
{
    show();
    click(recorder("fullScreenHotkey"));
    click(recorder("selectionHotkey"));
    ASSERT_TRUE(m_hotkeyService.isSuspended);
    const QFont before = QApplication::font();
    QApplication::setFont(QFont(u"Monospace"_s));
    QCoreApplication::processEvents();
    EXPECT_FALSE(recorder("fullScreenHotkey").isRecording());
    EXPECT_FALSE(m_hotkeyService.isSuspended);
    QApplication::setFont(before);
}

} // namespace
} // namespace lumacap::tests
