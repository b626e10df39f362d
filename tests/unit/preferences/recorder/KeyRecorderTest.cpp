#include "Keys.h"
#include "fakes/FakeHotkeyService.h"
#include "preferences/recorder/KeyCaptureView.h"
#include "preferences/recorder/KeyRecorderView.h"
#include "preferences/recorder/ShortcutSilence.h"

#include <QTest>
#include <QVBoxLayout>

#include <gmock/gmock.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

constexpr KeyCombo one{18, carbon::controlKey | carbon::shiftKey};
constexpr KeyCombo two{19, carbon::controlKey | carbon::shiftKey};
const QString prompt = u"Appuyez sur un raccourci..."_s;

/// Two recorders in a window that has the keyboard.
class KeyRecorderTest : public testing::Test {
protected:
    KeyRecorderTest()
    {
        auto *const layout = new QVBoxLayout(m_window.get());
        m_first = new KeyRecorderView(u"Plein ecran"_s, one, m_silence, m_window.get());
        m_second = new KeyRecorderView(u"Selection"_s, two, m_silence, m_window.get());
        layout->addWidget(m_first);
        layout->addWidget(m_second);
        QObject::connect(m_first, &KeyRecorderView::keyComboChanged, m_window.get(),
                         [this](const KeyCombo &combo) { m_recorded.push_back(combo); });
        m_window->show();
        m_window->activateWindow();
        if (!QTest::qWaitForWindowActive(m_window.get()))
            qFatal("no active window");
    }

    static void click(KeyRecorderView *recorder)
    {
        QTest::mouseClick(recorder, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    static QString shown(const KeyRecorderView *recorder)
    {
        return recorder->accessibleDescription();
    }
    static KeyCaptureView *capture(const KeyRecorderView *recorder)
    {
        return recorder->findChild<KeyCaptureView *>();
    }

    FakeHotkeyService m_service;
    ShortcutSilence m_silence{m_service};
    std::unique_ptr<QWidget> m_window = std::make_unique<QWidget>();
    KeyRecorderView *m_first = nullptr;
    KeyRecorderView *m_second = nullptr;
    std::vector<KeyCombo> m_recorded;
};

TEST_F(KeyRecorderTest, showsItsShortcutUntilItIsClicked)
{
    EXPECT_EQ(shown(m_first), u"⌃⇧1"_s);
    click(m_first);
    EXPECT_TRUE(m_first->isRecording());
    EXPECT_EQ(shown(m_first), prompt);
    EXPECT_EQ(shown(m_second), u"⌃⇧2"_s);
}

TEST_F(KeyRecorderTest, asksForTheFocusOnTheNextTurn)
{
    QTest::mouseClick(m_first, Qt::LeftButton);
    EXPECT_FALSE(capture(m_first)->hasFocus());
    QCoreApplication::processEvents();
    EXPECT_TRUE(capture(m_first)->hasFocus());
}

TEST_F(KeyRecorderTest, aLetterAloneDoesNothing)
{
    click(m_first);
    type(letterA);
    EXPECT_TRUE(m_first->isRecording());
    EXPECT_THAT(m_recorded, testing::IsEmpty());
}

TEST_F(KeyRecorderTest, aLetterWithCommandIsRecorded)
{
    click(m_first);
    type(letterA, Qt::MetaModifier);
    EXPECT_FALSE(m_first->isRecording());
    EXPECT_THAT(m_recorded, testing::ElementsAre(KeyCombo{0, 0x0100}));
    EXPECT_EQ(shown(m_first), u"⌘A"_s);
}

TEST_F(KeyRecorderTest, escapeWithCommandHeldStillCancels)
{
    click(m_first);
    type(escapeKey, Qt::MetaModifier);
    EXPECT_FALSE(m_first->isRecording());
    EXPECT_THAT(m_recorded, testing::IsEmpty());
    EXPECT_EQ(shown(m_first), u"⌃⇧1"_s);
}

TEST_F(KeyRecorderTest, escapeAloneCancels)
{
    click(m_first);
    type(escapeKey);
    EXPECT_FALSE(m_first->isRecording());
    EXPECT_EQ(m_first->keyCombo(), one);
}

TEST_F(KeyRecorderTest, aSecondClickEndsItWithoutAChange)
{
    click(m_first);
    click(m_first);
    EXPECT_FALSE(m_first->isRecording());
    EXPECT_EQ(shown(m_first), u"⌃⇧1"_s);
    EXPECT_THAT(m_recorded, testing::IsEmpty());
}

TEST_F(KeyRecorderTest, aFunctionKeyAloneIsRecordedWithoutModifiers)
{
    click(m_first);
    type(functionFive);
    EXPECT_THAT(m_recorded, testing::ElementsAre(KeyCombo{96, 0}));
    EXPECT_EQ(shown(m_first), u"F5"_s);
}

TEST_F(KeyRecorderTest, aKeyUnderCapsLockAloneIsRecordedWithoutModifiers)
{
    click(m_first);
    type(letterA, {}, capsLockIsOn);
    EXPECT_THAT(m_recorded, testing::ElementsAre(KeyCombo{0, 0}));
}

TEST_F(KeyRecorderTest, aFurtherPressWithAModifierChangesItAgain)
{
    click(m_first);
    type(letterA, Qt::MetaModifier);
    type(digitFive, Qt::ControlModifier);
    EXPECT_THAT(
        m_recorded,
        testing::ElementsAre(KeyCombo{0, carbon::cmdKey}, KeyCombo{23, carbon::controlKey}));
    EXPECT_FALSE(m_first->isRecording());
    EXPECT_EQ(shown(m_first), u"⌃5"_s);
}

TEST_F(KeyRecorderTest, theSameShortcutIsNoChange)
{
    click(m_first);
    type({10, Qt::Key_1}, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(m_first->isRecording());
    EXPECT_THAT(m_recorded, testing::IsEmpty());
}

TEST_F(KeyRecorderTest, twoRecordAtOnceAndTheOneWithTheFocusHasTheKeys)
{
    click(m_first);
    click(m_second);
    EXPECT_TRUE(m_first->isRecording());
    type(letterA, Qt::MetaModifier);
    EXPECT_EQ(m_second->keyCombo(), (KeyCombo{0, carbon::cmdKey}));
    EXPECT_EQ(m_first->keyCombo(), one);
    EXPECT_TRUE(m_first->isRecording());
}

TEST_F(KeyRecorderTest, tabIsRecordedWithAModifierAndLeadsNowhereMeanwhile)
{
    click(m_first);
    type(tabKey);
    EXPECT_TRUE(capture(m_first)->hasFocus());
    type(tabKey, Qt::ShiftModifier);
    EXPECT_THAT(m_recorded, testing::ElementsAre(KeyCombo{48, carbon::shiftKey}));
}

TEST_F(KeyRecorderTest, afterwardsTabLeadsToTheNextControl)
{
    click(m_first);
    type(letterA, Qt::MetaModifier);
    type(tabKey);
    EXPECT_TRUE(m_second->hasFocus());
    EXPECT_EQ(m_recorded.size(), 1);
}

TEST_F(KeyRecorderTest, isBegunByTheSpaceKey)
{
    m_first->setFocus(Qt::TabFocusReason);
    type(spaceKey);
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_first->isRecording());
    EXPECT_TRUE(capture(m_first)->hasFocus());
}

TEST_F(KeyRecorderTest, theProgramsOwnShortcutsAreSilentMeanwhile)
{
    click(m_first);
    EXPECT_TRUE(m_service.isSuspended);
    type(escapeKey);
    EXPECT_FALSE(m_service.isSuspended);
}

TEST_F(KeyRecorderTest, whatWasRecordedStaysSilentUntilTheKeyIsReleased)
{
    click(m_first);
    QKeyEvent press = keyPress(letterA, Qt::MetaModifier);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &press);
    EXPECT_FALSE(m_first->isRecording());
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_A, Qt::MetaModifier, 38, 0, 0, QString(), true);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &repeated);
    EXPECT_TRUE(m_service.isSuspended);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_A, Qt::MetaModifier, 38, 0, 0);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &release);
    EXPECT_FALSE(m_service.isSuspended);
}

TEST_F(KeyRecorderTest, aKeyThatIsReleasedInAnotherWindowSilencesNothingLater)
{
    click(m_first);
    QKeyEvent press = keyPress(letterA, Qt::MetaModifier);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &press);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    EXPECT_FALSE(m_service.isSuspended);
}

TEST_F(KeyRecorderTest, shortcutsWorkWhileAnotherWindowHasTheKeyboard)
{
    click(m_first);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_FALSE(m_service.isSuspended);
    EXPECT_TRUE(m_first->isRecording());

    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    EXPECT_TRUE(m_service.isSuspended);
}

TEST_F(KeyRecorderTest, shortcutsWorkAgainWhenTheWindowGoes)
{
    click(m_first);
    m_window.reset();
    EXPECT_FALSE(m_service.isSuspended);
}

TEST_F(KeyRecorderTest, shortcutsWorkAgainWhenTheRecorderAloneGoes)
{
    click(m_first);
    std::unique_ptr<KeyRecorderView>(m_first).reset();
    EXPECT_FALSE(m_service.isSuspended);
}

TEST_F(KeyRecorderTest, isAsWideAsItsTextNeedsAndNeverNarrow)
{
    EXPECT_EQ(m_first->sizeHint().width(), 140 + 2 * 8);
    const int textHeight = m_first->sizeHint().height() - 2 * 4;
    EXPECT_GE(textHeight, 13);
    EXPECT_LE(textHeight, 20);
    click(m_first);
    EXPECT_GE(m_first->sizeHint().width(), 140 + 2 * 8);
    EXPECT_EQ(capture(m_first)->geometry(), m_first->rect());
}

TEST(KeyCaptureView, withoutClosuresTakesEveryKeyAndDoesNothing)
{
    KeyCaptureView view;
    for (const Key key : {letterA, escapeKey, functionFive}) {
        QKeyEvent press = keyPress(key, Qt::ControlModifier);
        press.ignore();
        QCoreApplication::sendEvent(&view, &press);
        EXPECT_TRUE(press.isAccepted());
    }
}

} // namespace
} // namespace lumacap::tests
