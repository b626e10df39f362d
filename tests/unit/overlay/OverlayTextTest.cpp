#include "OverlayViewFixture.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "overlay/AnnotationTextField.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class OverlayTextTest : public OverlayViewFixture {
protected:
    OverlayTextTest()
    {
        use(AnnotationTool::Text);
        m_view->show();
        m_view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_view.get()));
        m_view->setFocus();
    }

    /// The open field.
    AnnotationTextField *field() const
    {
        const auto fields = m_view->findChildren<AnnotationTextField *>();
        for (AnnotationTextField *const each : fields) {
            if (each->isVisible())
                return each;
        }
        return nullptr;
    }

    /// Opens the field and types, as the keyboard does: to what has the focus.
    void type(const QString &text)
    {
        m_pointer->click(60, 100);
        QTest::keyClicks(QApplication::focusWidget(), text);
    }

    /// The text added last.
    const TextAnnotation *last() const { return OverlayViewFixture::last<TextAnnotation>(); }

    /// Presses a control that takes the keyboard by this policy.
    void pressControl(Qt::FocusPolicy policy)
    {
        QPushButton control(m_view.get());
        control.setFocusPolicy(policy);
        control.setGeometry(300, 10, 60, 30);
        control.show();
        QTest::mouseClick(&control, Qt::LeftButton);
    }
};

TEST_F(OverlayTextTest, aPressOpensAFieldAtItsPlaceWithTheKeyboard)
{
    m_store.setCurrentColor(AnnotationColor::Blue);
    m_pointer->press(60, 100);

    ASSERT_NE(field(), nullptr);
    EXPECT_EQ(field()->geometry(), QRect(60, 300 - (88 + 24), 200, 24));
    EXPECT_TRUE(field()->hasFocus());
    EXPECT_EQ(field()->placeholderText(), u"Saisir du texte..."_s);
    EXPECT_EQ(field()->font().pixelSize(), 18);
    EXPECT_EQ(field()->font().weight(), QFont::Medium);
    EXPECT_EQ(field()->palette().color(QPalette::Text), nsColor(AnnotationColor::Blue));
    EXPECT_EQ(field()->palette().color(QPalette::Base), QColor(Qt::white));
    EXPECT_TRUE(m_store.annotations().empty());
}

TEST_F(OverlayTextTest, tabKeepsTheTextAtTheFieldsLowerLeftCorner)
{
    type(u"Bonjour"_s);
    QTest::keyClick(field(), Qt::Key_Tab);

    ASSERT_NE(last(), nullptr);
    EXPECT_EQ(last()->text, u"Bonjour"_s);
    EXPECT_EQ(last()->position, (Point<Canvas>{60, 88}));
    EXPECT_EQ(last()->fontSize, 18);
    EXPECT_EQ(last()->lineWidth, 1);
    EXPECT_EQ(last()->color, nsColor(AnnotationColor::Red));
    EXPECT_EQ(field(), nullptr);
    EXPECT_TRUE(m_view->hasFocus());
}

TEST_F(OverlayTextTest, shiftTabKeepsTheTextToo)
{
    type(u"Bonjour"_s);
    QTest::keyClick(field(), Qt::Key_Backtab, Qt::ShiftModifier);

    ASSERT_NE(last(), nullptr);
    EXPECT_TRUE(m_view->hasFocus());
}

TEST_F(OverlayTextTest, theColourIsTheOneAtTheEndOfTyping)
{
    type(u"Bonjour"_s);
    m_store.setCurrentColor(AnnotationColor::Green);
    QTest::keyClick(field(), Qt::Key_Tab);

    ASSERT_NE(last(), nullptr);
    EXPECT_EQ(last()->color, nsColor(AnnotationColor::Green));
}

TEST_F(OverlayTextTest, anEmptyTextAddsNothingAndTheFieldGoesAllTheSame)
{
    m_pointer->click(60, 100);
    QTest::keyClick(field(), Qt::Key_Tab);

    EXPECT_TRUE(m_store.annotations().empty());
    EXPECT_EQ(field(), nullptr);
}

TEST_F(OverlayTextTest, aPressOnWhatTakesTheKeyboardKeepsTheText)
{
    type(u"Bonjour"_s);

    pressControl(Qt::StrongFocus);

    ASSERT_NE(last(), nullptr);
    EXPECT_EQ(last()->text, u"Bonjour"_s);
    EXPECT_EQ(field(), nullptr);
}

TEST_F(OverlayTextTest, aPressOnWhatLeavesTheKeyboardLeavesTheFieldOpen)
{
    type(u"Bonjour"_s);

    pressControl(Qt::TabFocus);

    EXPECT_TRUE(m_store.annotations().empty());
    ASSERT_NE(field(), nullptr);
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(OverlayTextTest, aSecondPressWithTheToolStartsOverAndLosesTheFirstText)
{
    type(u"Bonjour"_s);
    m_pointer->click(120, 200);

    ASSERT_NE(field(), nullptr);
    EXPECT_EQ(field()->text(), QString());
    EXPECT_EQ(field()->x(), 120);
    EXPECT_TRUE(field()->hasFocus());
    EXPECT_TRUE(m_store.annotations().empty());
}

TEST_F(OverlayTextTest, escapeClosesTheFieldAloneAndASecondOneCancels)
{
    EXPECT_CALL(m_cancel, Call).Times(0);
    type(u"Bonjour"_s);
    QTest::keyClick(field(), Qt::Key_Escape);
    EXPECT_EQ(field(), nullptr);
    EXPECT_TRUE(m_store.annotations().empty());
    EXPECT_TRUE(m_view->hasFocus());
    testing::Mock::VerifyAndClear(&m_cancel);

    EXPECT_CALL(m_cancel, Call).Times(1);
    QTest::keyClick(m_view.get(), Qt::Key_Escape);
}

TEST_F(OverlayTextTest, theFieldStaysOpenWhileOtherToolsDraw)
{
    type(u"Bonjour"_s);
    use(AnnotationTool::Rectangle);
    m_pointer->drag(200, 200, 300, 250);

    EXPECT_NE(m_store.annotations().size(), 0U);
    ASSERT_NE(field(), nullptr);
    EXPECT_EQ(field()->text(), u"Bonjour"_s);
    EXPECT_TRUE(field()->hasFocus());

    QTest::keyClick(field(), Qt::Key_Tab);
    ASSERT_NE(last(), nullptr);
    EXPECT_EQ(last()->text, u"Bonjour"_s);
}

TEST_F(OverlayTextTest, undoWhileTypingIsTheTexts)
{
    m_store.add(std::make_unique<RectAnnotation>(Qt::red, 4, Rect<Canvas>{{10, 10}, {20, 20}}));
    type(u"Bonjour"_s);

    QTest::keyClick(field(), Qt::Key_Z, Qt::ControlModifier);

    EXPECT_EQ(m_store.annotations().size(), 1U);
    EXPECT_EQ(field()->text(), QString());
}

TEST_F(OverlayTextTest, commandMakesNoLetters)
{
    type(u"Bonjour"_s);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, Qt::MetaModifier, 24, 0, 0, u"q"_s);
    QCoreApplication::sendEvent(field(), &press);
    EXPECT_EQ(field()->text(), u"Bonjour"_s);

    QKeyEvent undo(QEvent::KeyPress, Qt::Key_Z, Qt::MetaModifier, 52, 0, 0, u"z"_s);
    QCoreApplication::sendEvent(field(), &undo);
    EXPECT_EQ(field()->text(), QString());
}

TEST_F(OverlayTextTest, whatIsTypedMayBeInAnyScript)
{
    m_pointer->click(60, 100);
    QInputMethodEvent typed;
    typed.setCommitString(u"été 日本語 שלום"_s);
    QCoreApplication::sendEvent(field(), &typed);
    QTest::keyClick(field(), Qt::Key_Tab);

    ASSERT_NE(last(), nullptr);
    EXPECT_EQ(last()->text, u"été 日本語 שלום"_s);
}

TEST_F(OverlayTextTest, aRightClickInTheFieldOpensNoWindow)
{
    m_pointer->click(60, 100);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(5, 5),
                            field()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(field(), &asked);

    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(m_view->findChildren<QMenu *>().isEmpty());
}

TEST_F(OverlayTextTest, theFieldsLettersGrowWithTheUnitsOfAPoint)
{
    show({{{0, 0}, {400, 300}}, 2, {800, 600}, 300}); // two units a point
    m_pointer->press(120, 200);

    const auto *const large = m_view->findChild<AnnotationTextField *>();
    ASSERT_NE(large, nullptr);
    EXPECT_EQ(large->font().pixelSize(), 36);
    EXPECT_EQ(large->size(), QSize(400, 48));
}

} // namespace
} // namespace lumacap::tests
