#include "OverlayViewFixture.h"
#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"

#include <limits>

namespace lumacap::tests {
namespace {

using OverlayEditingTest = OverlayViewFixture;

TEST_F(OverlayEditingTest, anArrowGoesFromThePressToTheRelease)
{
    use(AnnotationTool::Arrow);
    m_pointer->drag(40, 50, 140, 90);

    const auto *const arrow = last<ArrowAnnotation>();
    ASSERT_NE(arrow, nullptr);
    EXPECT_EQ(arrow->startPoint, (Point<Canvas>{40, 50}));
    EXPECT_EQ(arrow->endPoint, (Point<Canvas>{140, 90}));
    EXPECT_EQ(arrow->color, nsColor(AnnotationColor::Red));
    EXPECT_EQ(arrow->lineWidth, 4);
}

TEST_F(OverlayEditingTest, aMarkTakesColourAndThicknessAtThePress)
{
    use(AnnotationTool::Arrow);
    m_store.setCurrentColor(AnnotationColor::Blue);
    m_store.setCurrentThickness(LineThickness::Thick);
    m_pointer->press(40, 50);
    m_store.setCurrentColor(AnnotationColor::Green);
    m_store.setCurrentThickness(LineThickness::Thin);
    m_pointer->release(90, 90);

    ASSERT_NE(last<ArrowAnnotation>(), nullptr);
    EXPECT_EQ(last<ArrowAnnotation>()->color, nsColor(AnnotationColor::Blue));
    EXPECT_EQ(last<ArrowAnnotation>()->lineWidth, 6);
}

TEST_F(OverlayEditingTest, aRectangleKeepsTheDirectionOfItsDrag)
{
    use(AnnotationTool::Rectangle);
    m_pointer->drag(140, 90, 40, 150);

    ASSERT_NE(last<RectAnnotation>(), nullptr);
    EXPECT_EQ(last<RectAnnotation>()->origin, (Point<Canvas>{140, 90}));
    EXPECT_EQ(last<RectAnnotation>()->size, (Size{-100, 60}));
}

TEST_F(OverlayEditingTest, aClickWithoutMovementAddsARectangleOfNoSize)
{
    use(AnnotationTool::Rectangle);
    m_pointer->click(60, 70);

    ASSERT_NE(last<RectAnnotation>(), nullptr);
    EXPECT_EQ(last<RectAnnotation>()->origin, (Point<Canvas>{60, 70}));
    EXPECT_EQ(last<RectAnnotation>()->size, (Size{0, 0}));
}

TEST_F(OverlayEditingTest, anEllipseAndABlurAreDraggedLikeARectangle)
{
    use(AnnotationTool::Ellipse);
    m_pointer->drag(40, 50, 140, 90);
    ASSERT_NE(last<EllipseAnnotation>(), nullptr);
    EXPECT_EQ(last<EllipseAnnotation>()->size, (Size{100, 40}));

    use(AnnotationTool::Blur);
    m_pointer->drag(40, 50, 140, 30);
    ASSERT_NE(last<BlurAnnotation>(), nullptr);
    EXPECT_EQ(last<BlurAnnotation>()->size, (Size{100, -20}));
}

TEST_F(OverlayEditingTest, aFreehandStrokeHoldsEveryPointOfTheWay)
{
    use(AnnotationTool::Freehand);
    m_pointer->press(40, 50);
    m_pointer->move(41, 50);
    m_pointer->move(41, 50); // where it stands still, too
    m_pointer->move(60, 80);
    m_pointer->release(70, 80); // a release is no motion

    ASSERT_NE(last<FreehandAnnotation>(), nullptr);
    EXPECT_EQ(last<FreehandAnnotation>()->points,
              (std::vector<Point<Canvas>>{{40, 50}, {41, 50}, {41, 50}, {60, 80}}));
}

TEST_F(OverlayEditingTest, pointsPlacedOneAfterAnotherAreNumberedOn)
{
    m_store.numberCounter = 4;
    m_store.setCurrentThickness(LineThickness::Thick);
    use(AnnotationTool::NumberedPoint);
    m_pointer->press(40, 50);
    ASSERT_NE(last<NumberedPointAnnotation>(), nullptr) << "at the press";
    EXPECT_EQ(last<NumberedPointAnnotation>()->number, 5);
    EXPECT_EQ(last<NumberedPointAnnotation>()->center, (Point<Canvas>{40, 50}));
    EXPECT_EQ(last<NumberedPointAnnotation>()->lineWidth, 2) << "whatever the thickness";
    m_pointer->move(80, 80);
    m_pointer->release(80, 80);
    EXPECT_EQ(last<NumberedPointAnnotation>()->center, (Point<Canvas>{40, 50}));

    m_pointer->click(90, 50);
    EXPECT_EQ(last<NumberedPointAnnotation>()->number, 6);
    m_store.undo();
    m_pointer->click(120, 50);
    EXPECT_EQ(last<NumberedPointAnnotation>()->number, 7) << "an undone number stays given";
}

TEST_F(OverlayEditingTest, marksAreDrawnWithoutASelectionAndOutsideOfOne)
{
    use(AnnotationTool::Rectangle);
    m_pointer->drag(40, 50, 140, 90);
    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);

    use(AnnotationTool::Selection);
    m_pointer->drag(200, 150, 300, 250);
    use(AnnotationTool::Rectangle);
    m_pointer->drag(-20, 10, 100, 330);
    EXPECT_EQ(count(), 2U);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{200, 150}, {100, 100}}));
}

TEST_F(OverlayEditingTest, aMarkShowsWhileItIsDrawnAndIsInTheStoreAfterwards)
{
    use(AnnotationTool::Rectangle);
    m_pointer->press(50, 50);
    m_pointer->move(150, 130);
    EXPECT_EQ(count(), 0U);
    EXPECT_EQ(m_view->picture().pixelColor(50, 200), nsColor(AnnotationColor::Red));
    m_pointer->release(150, 130);
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(m_view->picture().pixelColor(50, 200), nsColor(AnnotationColor::Red));
}

TEST_F(OverlayEditingTest, aSecondPressReplacesTheMarkWhoseReleaseWasLost)
{
    use(AnnotationTool::Rectangle);
    m_pointer->press(50, 50);
    m_pointer->move(150, 130);
    m_pointer->press(60, 60);
    m_pointer->release(60, 60);

    ASSERT_EQ(count(), 1U);
    EXPECT_EQ(last<RectAnnotation>()->origin, (Point<Canvas>{60, 60}));
}

TEST_F(OverlayEditingTest, aReleaseWithoutAPressAddsNothing)
{
    use(AnnotationTool::Arrow);
    m_pointer->release(50, 50);

    EXPECT_EQ(count(), 0U);
}

TEST_F(OverlayEditingTest, otherButtonsDrawNothing)
{
    use(AnnotationTool::Rectangle);
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(50, 50), QPointF(50, 50), button,
                          button, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.get(), &press);
    }
    EXPECT_EQ(m_view->scene().inProgress, std::nullopt);
    EXPECT_EQ(count(), 0U);
}

TEST_F(OverlayEditingTest, theCrossFollowsThePointerWhileDrawing)
{
    use(AnnotationTool::Rectangle);
    m_pointer->press(50, 50);
    m_pointer->move(150, 130);

    EXPECT_EQ(m_view->scene().pointer, (Point<Canvas>{150, 130}));
    EXPECT_EQ(m_view->scene().guideLines, GuideLines::Hidden);
}

TEST_F(OverlayEditingTest, commandAndTheZKeysPlaceUndoWhateverElseIsHeldAndWhateverTheLayout)
{
    constexpr quint32 zPlace = 52; // that of W on a French keyboard
    use(AnnotationTool::NumberedPoint);
    for (int point = 0; point < 3; ++point)
        m_pointer->click(50, 50);

    m_pointer->key(Qt::Key_Z, Qt::MetaModifier, zPlace);
    EXPECT_EQ(count(), 2U);
    m_pointer->key(Qt::Key_W, Qt::MetaModifier | Qt::ShiftModifier, zPlace);
    EXPECT_EQ(count(), 1U);
    m_pointer->key(Qt::Key_Z, Qt::MetaModifier, 25); // the letter at another place
    EXPECT_EQ(count(), 1U);
}

TEST_F(OverlayEditingTest, controlAndTheLetterZUndoWhereverTheLetterIs)
{
    use(AnnotationTool::NumberedPoint);
    m_pointer->click(50, 50);
    m_pointer->click(90, 50);

    m_pointer->key(Qt::Key_Z, Qt::ControlModifier, 25);
    EXPECT_EQ(count(), 1U);
    m_pointer->key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, 52);
    EXPECT_EQ(count(), 0U);
    m_pointer->key(Qt::Key_Z, Qt::ControlModifier, 52);
    EXPECT_EQ(count(), 0U) << "nothing is left";
}

TEST_F(OverlayEditingTest, otherKeysDoNothing)
{
    EXPECT_CALL(m_cancel, Call).Times(0);
    use(AnnotationTool::NumberedPoint);
    m_pointer->click(50, 50);

    m_pointer->key(Qt::Key_Z, Qt::NoModifier, 52);
    m_pointer->key(Qt::Key_Backspace, Qt::NoModifier, 22);
    m_pointer->key(Qt::Key_A, Qt::ControlModifier, 38);

    EXPECT_EQ(count(), 1U);
}

TEST_F(OverlayEditingTest, escapeIsKnownByItsPlaceAndByItsSymbol)
{
    EXPECT_CALL(m_cancel, Call).Times(2);

    m_pointer->key(Qt::Key_unknown, Qt::NoModifier, 9);
    m_pointer->key(Qt::Key_Escape, Qt::NoModifier, 66); // Caps Lock made Escape
}

// The tool can be changed by keyboard while the button is held.

TEST_F(OverlayEditingTest, anotherToolDuringASelectionsDragEndsTheDragForGood)
{
    m_pointer->press(100, 100);
    m_pointer->move(200, 200);
    use(AnnotationTool::Arrow);
    m_pointer->release(200, 200);
    use(AnnotationTool::Selection);
    m_pointer->move(220, 220);

    EXPECT_EQ(m_view->selectionRectForDisplay(), std::nullopt);
    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);
}

TEST_F(OverlayEditingTest, aMarkIsFinishedByTheReleaseWhateverWasChosenMeanwhile)
{
    use(AnnotationTool::Arrow);
    m_pointer->press(100, 100);
    m_pointer->move(150, 150);
    use(AnnotationTool::Selection);
    m_pointer->move(200, 200);
    m_pointer->release(200, 200);

    ASSERT_NE(last<ArrowAnnotation>(), nullptr);
    EXPECT_EQ(last<ArrowAnnotation>()->endPoint, (Point<Canvas>{200, 200}));
    EXPECT_EQ(m_view->scene().inProgress, std::nullopt);
    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);
}

TEST_F(OverlayEditingTest, aLoupeWhoseToolWasLeftBeforeItsReleaseIsAddedAtOnce)
{
    EXPECT_CALL(m_cancel, Call).Times(1);
    use(AnnotationTool::Magnifier);
    m_pointer->press(100, 100);
    m_pointer->move(150, 150);
    use(AnnotationTool::Arrow);
    m_pointer->release(150, 150);
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(m_view->scene().inProgress, std::nullopt);

    m_pointer->key(Qt::Key_Escape); // has nothing left to back out of
}

TEST_F(OverlayEditingTest, anotherToolTakesTheGuideLinesAway)
{
    m_pointer->move(100, 100);
    ASSERT_EQ(m_view->scene().guideLines, GuideLines::Shown);
    use(AnnotationTool::Arrow);

    EXPECT_EQ(m_view->scene().guideLines, GuideLines::Hidden);
}

using OverlayEditingDeathTest = OverlayViewFixture;

TEST_F(OverlayEditingDeathTest, morePointsThanNumbersBreakTheRules)
{
    use(AnnotationTool::NumberedPoint);
    m_store.numberCounter = std::numeric_limits<int>::max();

    EXPECT_DEATH(m_pointer->click(50, 50), "more numbered points than there are numbers");
}

} // namespace
} // namespace lumacap::tests
