#include "OverlayViewFixture.h"
#include "annotation/shapes/MagnifierAnnotation.h"

namespace lumacap::tests {
namespace {

class OverlayLoupeTest : public OverlayViewFixture {
protected:
    OverlayLoupeTest() { use(AnnotationTool::Magnifier); }

    /// The loupe that is being placed; none before its source is dragged out and after it is added.
    const MagnifierAnnotation *pending() const
    {
        const auto inProgress = m_view->scene().inProgress;
        return inProgress ? dynamic_cast<const MagnifierAnnotation *>(inProgress->annotation)
                          : nullptr;
    }

    /// The pending loupe's origin.
    Point<Canvas> place() const
    {
        return pending() != nullptr ? pending()->loupeOrigin : Point<Canvas>{-1, -1};
    }

    void dragSource() { m_pointer->drag(100, 100, 140, 130); }
};

TEST_F(OverlayLoupeTest, aSourceOfFourPointsInOneDirectionIsDropped)
{
    m_pointer->drag(100, 100, 104, 150);
    EXPECT_EQ(pending(), nullptr);
    m_pointer->drag(100, 100, 150, 96);
    EXPECT_EQ(pending(), nullptr);

    EXPECT_EQ(count(), 0U);
    dragSource();
    EXPECT_NE(pending(), nullptr) << "the next one is dragged out from the beginning";
}

TEST_F(OverlayLoupeTest, aSourceOfFourAndAHalfPointsIsKeptAndItsLoupePlaced)
{
    m_pointer->drag(100, 100, 104.5, 95.5);

    ASSERT_NE(pending(), nullptr);
    EXPECT_EQ(pending()->source(), (Rect<Canvas>{{100, 95.5}, {4.5, 4.5}}));
    EXPECT_EQ(pending()->loupe().origin.x, 124.5) << "20 beside it";
    EXPECT_EQ(pending()->loupe().size, (Size{6.75, 6.75}));
    EXPECT_EQ(count(), 0U);
}

TEST_F(OverlayLoupeTest, takesColourThicknessZoomAndShapeAtThePress)
{
    m_store.setCurrentColor(AnnotationColor::Yellow);
    m_store.setCurrentThickness(LineThickness::Thin);
    m_store.setMagnifierZoom(MagnifierZoom::X3);
    m_store.setMagnifierShape(MagnifierShape::Circle);
    m_pointer->press(100, 100);
    m_store.setMagnifierZoom(MagnifierZoom::X4);
    m_pointer->move(140, 130);
    m_pointer->release(140, 130);

    ASSERT_NE(pending(), nullptr);
    EXPECT_EQ(pending()->color, nsColor(AnnotationColor::Yellow));
    EXPECT_EQ(pending()->lineWidth, 2);
    EXPECT_EQ(pending()->zoomFactor, 3);
    EXPECT_EQ(pending()->shape, MagnifierShape::Circle);
}

TEST_F(OverlayLoupeTest, aDragInsideThePendingLoupeMovesItByTheDistance)
{
    dragSource();
    const Point<Canvas> before = place();

    m_pointer->press(before.x + 5, before.y + 6);
    EXPECT_EQ(place(), before);
    m_pointer->move(before.x + 35, before.y - 14);
    m_pointer->release(before.x + 35, before.y - 14);

    EXPECT_EQ(place(), (Point<Canvas>{before.x + 30, before.y - 20}));
    EXPECT_EQ(count(), 0U) << "it stays pending";
    m_pointer->move(10, 10);
    EXPECT_EQ(place(), (Point<Canvas>{before.x + 30, before.y - 20}));
}

TEST_F(OverlayLoupeTest, aClickOutsideAddsItAndStartsNothingAndTheNextOneStartsANewOne)
{
    dragSource();

    m_pointer->press(20, 20);
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(pending(), nullptr);
    m_pointer->move(60, 60);
    EXPECT_EQ(pending(), nullptr);
    m_pointer->release(60, 60);
    EXPECT_EQ(count(), 1U);

    m_pointer->drag(20, 20, 60, 60);
    EXPECT_NE(pending(), nullptr);
}

TEST_F(OverlayLoupeTest, escapeDropsThePendingOneAloneAndASecondCancels)
{
    EXPECT_CALL(m_cancel, Call).Times(0);
    dragSource();
    m_pointer->key(Qt::Key_Escape);
    EXPECT_EQ(pending(), nullptr);
    EXPECT_EQ(count(), 0U);
    expectFullRepaint({.pointer = Point<Canvas>{140, 130}});
    testing::Mock::VerifyAndClear(&m_cancel);

    EXPECT_CALL(m_cancel, Call).Times(1);
    m_pointer->key(Qt::Key_Escape);
}

TEST_F(OverlayLoupeTest, anotherToolAddsThePendingOne)
{
    dragSource();
    use(AnnotationTool::Arrow);
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(pending(), nullptr);

    use(AnnotationTool::Magnifier);
    dragSource();
    use(AnnotationTool::Magnifier);
    EXPECT_NE(pending(), nullptr) << "the same tool again is no other";
}

TEST_F(OverlayLoupeTest, thePointerIsAHandOverThePendingOneAndHiddenElsewhere)
{
    dragSource();
    const Point<Canvas> inside{place().x + 5, place().y + 5};

    m_pointer->move(inside.x, inside.y);
    EXPECT_EQ(m_view->cursor().shape(), Qt::OpenHandCursor);
    EXPECT_EQ(m_view->scene().pointer, inside);
    EXPECT_EQ(m_view->scene().guideLines, GuideLines::Hidden);

    m_pointer->move(20, 20);
    EXPECT_EQ(m_view->cursor().shape(), Qt::BitmapCursor);

    m_pointer->move(inside.x, inside.y);
    m_pointer->click(20, 20); // which adds it
    m_pointer->move(inside.x, inside.y);
    EXPECT_EQ(m_view->cursor().shape(), Qt::BitmapCursor);
}

TEST_F(OverlayLoupeTest, guideLinesStayAwayWhileOneIsPendingAlsoWithTheSelectionToolJustChosen)
{
    dragSource();
    m_store.setCurrentTool(AnnotationTool::Selection); // the view hears of it on the next turn
    m_pointer->move(20, 20);

    EXPECT_EQ(m_view->scene().guideLines, GuideLines::Hidden);
}

} // namespace
} // namespace lumacap::tests
