#include "overlay/OverlayToolbar.h"

#include "OverlayViewFixture.h"
#include "annotation/toolbar/AnnotationToolbarView.h"

#include <QResizeEvent>

namespace lumacap::tests {
namespace {

TEST(ToolbarFrame, isCentredSixtyPointsBelowTheTop)
{
    EXPECT_EQ(toolbarFrame({1920, 1080}, {900, 44}),
              (Rect<Canvas>{{510, 1080 - 44 - 60}, {900, 44}}));
    EXPECT_EQ(toolbarFrame({1921, 1080}, {900, 44}).origin.x, 510.5);
}

TEST(ToolbarFrame, leavesFortyPointsOfTheWidth)
{
    EXPECT_EQ(toolbarWidth(800), 760);
    EXPECT_EQ(toolbarFrame({800, 600}, {760, 82}), (Rect<Canvas>{{20, 458}, {760, 82}}));
}

TEST(ToolbarFrame, keepsToAScreenThatIsTooLowForItsMargin)
{
    EXPECT_EQ(toolbarFrame({300, 120}, {260, 100}), (Rect<Canvas>{{20, 0}, {260, 100}}));
    EXPECT_EQ(toolbarFrame({300, 120}, {260, 150}), (Rect<Canvas>{{20, -30}, {260, 150}}))
        << "its upper rows";
}

class OverlayToolbarTest : public OverlayViewFixture {
protected:
    static constexpr CapturedScreen wide{{{0, 0}, {1400, 300}}, 1, {1400, 300}, 300};

    OverlayToolbarTest()
    {
        show(wide);
        m_host = new OverlayToolbar(m_store, *m_view, m_frozen);
    }

    AnnotationToolbarView *toolbar() const { return m_view->findChild<AnnotationToolbarView *>(); }

    OverlayToolbar *m_host = nullptr; ///< the view's
};

TEST_F(OverlayToolbarTest, laysTheToolbarIntoItsFrame)
{
    const Size fitting = toolbar()->fittingSize(toolbarWidth(1400));
    const Rect<Canvas> frame = toolbarFrame({1400, 300}, fitting);

    EXPECT_EQ(m_view->toolbarFrame(), frame);
    EXPECT_EQ(toolbar()->geometry(),
              QRectF(frame.minX(), 60, frame.width(), frame.height()).toRect());
    EXPECT_FALSE(toolbar()->isHidden());
}

TEST_F(OverlayToolbarTest, measuresAndPlacesItAgainWhenItsGroupsComeAndGo)
{
    const Rect<Canvas> before = m_view->toolbarFrame();

    m_store.setCurrentTool(AnnotationTool::Magnifier);
    QCoreApplication::sendPostedEvents();
    const Rect<Canvas> wider = m_view->toolbarFrame();
    EXPECT_GT(wider.width(), before.width() + 200);
    EXPECT_NEAR(wider.midX(), 700, 0.5);

    m_store.setCurrentTool(AnnotationTool::Arrow);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(m_view->toolbarFrame(), before);
}

TEST_F(OverlayToolbarTest, aClickOnItNeverReachesTheSelection)
{
    m_windows.all = {{.layer = 0,
                      .windowNumber = 5,
                      .ownerPID = 77,
                      .bounds = Rect<TopLeftGlobal>{{0, 0}, {1400, 300}},
                      .ownerName = QStringLiteral("Editor"),
                      .windowName = std::nullopt}};
    m_pointer->move(30, 30);
    const auto cross = m_view->scene().pointer;
    Pointer onToolbar(*toolbar());

    onToolbar.move(4, 4);
    onToolbar.click(4, 4);
    onToolbar.drag(4, 4, 200, 40);

    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);
    EXPECT_EQ(m_view->scene().pointer, cross) << "the cross stays where it was";
    EXPECT_EQ(toolbar()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(OverlayToolbarTest, followsTheViewsSizeAndTheUnitsOfAPoint)
{
    show({{{0, 0}, {1400, 300}}, 2, {2800, 600}, 300}); // two units a point
    new OverlayToolbar(m_store, *m_view, m_frozen);
    const Rect<Canvas> frame = m_view->toolbarFrame();

    EXPECT_EQ(toolbar()->unitsAPoint(), 2);
    EXPECT_EQ(toolbar()->size(), QSizeF(frame.width() * 2, frame.height() * 2).toSize());
    toolbar()->move(0, 0);
    m_view->resize(2801, 600);
    QResizeEvent resized(m_view->size(), QSize(2800, 600));
    QCoreApplication::sendEvent(m_view.get(), &resized);
    EXPECT_EQ(toolbar()->y(), 120);
}

TEST_F(OverlayToolbarTest, showsTheFrozenScreenThroughItself)
{
    const auto strip = [this](const QColor &color) {
        QImage screen(1400, 300, QImage::Format_RGB32);
        screen.fill(color);
        new OverlayToolbar(m_store, *m_view, screen);
        auto *const newest = m_view->findChildren<AnnotationToolbarView *>().last();
        return newest->grab().toImage().pixelColor(newest->width() / 2, 3);
    };
    EXPECT_GT(strip(Qt::red).red() - strip(Qt::blue).red(), 30);
}

} // namespace
} // namespace lumacap::tests
