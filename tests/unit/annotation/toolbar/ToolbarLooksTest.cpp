#include "Toolbar.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/ToolbarTheme.h"

#include <QTest>
#include <QWindow>

namespace lumacap::tests {
namespace {

class ToolbarLooksTest : public ToolbarTest {
protected:
    /// The colour at a place of a control's frame, in points.
    QColor colorAt(const char *name, double x, double y) const
    {
        const QPointF place = control(name).frame().topLeft() + QPointF(x, y);
        return picture().pixelColor(static_cast<int>(std::floor(place.x())),
                                    static_cast<int>(std::floor(place.y())));
    }

    void point(const char *name)
    {
        QTest::mouseMove(m_host->windowHandle(), inHost(control(name).frame().center()));
    }
};

TEST_F(ToolbarLooksTest, theCurrentToolLiesOnAThirdOfTheAccentColour)
{
    EXPECT_TRUE(areAlike(colorAt("tool.selection", 2, 14), over(groundColor(), accentColor, 0.3)));
    EXPECT_TRUE(areAlike(colorAt("tool.arrow", 2, 14), groundColor()));
}

TEST_F(ToolbarLooksTest, theHighlightHasRoundCorners)
{
    EXPECT_TRUE(areAlike(colorAt("tool.selection", 0, 0), groundColor()));
    EXPECT_TRUE(areAlike(colorAt("tool.selection", 27, 27), groundColor()));
    EXPECT_TRUE(areAlike(colorAt("tool.selection", 14, 0), over(groundColor(), accentColor, 0.3)));
}

TEST_F(ToolbarLooksTest, theFrameSwitchIsHighlightedWhileTheFrameIsOn)
{
    EXPECT_TRUE(areAlike(colorAt("frame", 2, 14), groundColor()));
    m_store->setShowFrame(true);
    settle();
    EXPECT_TRUE(areAlike(colorAt("frame", 2, 14), over(groundColor(), accentColor, 0.3)));
    EXPECT_TRUE(
        areAlike(colorAt("frameBackground", 3, 14), over(groundColor(), accentColor, 0.15)));
}

TEST_F(ToolbarLooksTest, swatchesAreDiscsOfTheirColour)
{
    for (const auto &color : annotationColors)
        EXPECT_TRUE(
            areAlike(colorAt(("color." + QByteArray(color.rawValue.data())).constData(), 8, 8),
                     nsColor(color.value)));
}

TEST_F(ToolbarLooksTest, theCurrentSwatchHasAWhiteAndAnAccentRing)
{
    // From the middle: the disc to 7, white to 9, the accent colour to 11.
    constexpr int roundness = 16; // the pixels of a ring are not quite inside it
    const QColor red = nsColor(AnnotationColor::Red);
    EXPECT_TRUE(areAlike(colorAt("color.red", 2, 8), red));
    EXPECT_TRUE(areAlike(colorAt("color.red", 0, 8), Qt::white, roundness));
    EXPECT_TRUE(areAlike(colorAt("color.red", -1, 8), Qt::white, roundness));
    EXPECT_TRUE(areAlike(colorAt("color.red", -2, 8), accentColor, roundness));
    EXPECT_TRUE(areAlike(colorAt("color.red", -3, 8), accentColor, roundness));
    EXPECT_TRUE(areAlike(colorAt("color.red", -4, 8), groundColor(), roundness));
}

TEST_F(ToolbarLooksTest, anotherSwatchHasAThinGreyRing)
{
    // At two pixels a point the ring of one point is whole: 9.5 to 10.5 from the middle.
    const QImage fine = picture(2);
    const QPointF middle = control("color.blue").frame().center() * 2;
    const auto at = [&](int left) {
        return fine.pixelColor(static_cast<int>(middle.x()) - left, static_cast<int>(middle.y()));
    };
    const QColor ring = over(groundColor(), QColor(142, 142, 147), 0.3);
    EXPECT_TRUE(areAlike(at(20), ring));
    EXPECT_TRUE(areAlike(at(21), ring));
    EXPECT_TRUE(areAlike(at(18), groundColor()));
    EXPECT_TRUE(areAlike(at(23), groundColor()));
}

TEST_F(ToolbarLooksTest, theCurrentBarHasTheAccentColourTheOthersThatOfText)
{
    EXPECT_TRUE(areAlike(colorAt("thickness.medium", 9, 2), accentColor));
    EXPECT_TRUE(areAlike(colorAt("thickness.thin", 9, 1), textColor));
    EXPECT_TRUE(areAlike(colorAt("thickness.thick", 9, 3), textColor));
    EXPECT_TRUE(areAlike(colorAt("thickness.thick", 9, 0), textColor));
    EXPECT_TRUE(areAlike(colorAt("thickness.thick", 9, -1), groundColor()));
    EXPECT_TRUE(areAlike(colorAt("thickness.thick", 9, 6), groundColor()));
}

TEST_F(ToolbarLooksTest, undoIsPaleWhileThereIsNothingToUndo)
{
    const QImage pale = picture();
    addAnnotation();
    settle();
    const QImage full = picture();

    const auto darkest = [&](const QImage &image) {
        int darkestYet = 255;
        const QRect frame = control("undo").frame().toRect();
        for (int y = frame.top(); y <= frame.bottom(); ++y) {
            for (int x = frame.left(); x <= frame.right(); ++x)
                darkestYet = std::min(darkestYet, image.pixelColor(x, y).red());
        }
        return darkestYet;
    };
    EXPECT_LT(darkest(full), 80);
    EXPECT_GT(darkest(pale), 150);
}

TEST_F(ToolbarLooksTest, validerIsFilledWithTheAccentColour)
{
    EXPECT_TRUE(areAlike(colorAt("confirm", 5, 12), accentColor));
    EXPECT_TRUE(areAlike(colorAt("cancel", 5, 12), over(groundColor(), Qt::white, 0.6)));
}

TEST_F(ToolbarLooksTest, thePointerAndAPressShow)
{
    point("tool.blur");
    EXPECT_TRUE(areAlike(colorAt("tool.blur", 2, 14),
                         over(groundColor(), textColor, feedbacklook::hoverOpacity)));
    QTest::mousePress(m_host->windowHandle(), Qt::LeftButton, {},
                      inHost(control("tool.blur").frame().center()));
    EXPECT_TRUE(areAlike(colorAt("tool.blur", 2, 14),
                         over(groundColor(), textColor, feedbacklook::pressedOpacity)));
    QTest::mouseRelease(m_host->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(m_store->currentTool(), AnnotationTool::Selection) << "released elsewhere";
    point("tool.arrow");
    EXPECT_TRUE(areAlike(colorAt("tool.blur", 2, 14), groundColor()));
}

TEST_F(ToolbarLooksTest, theFocusShowsWhenTheKeyboardGaveIt)
{
    control("tool.arrow").setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(areAlike(colorAt("tool.arrow", -2, 14), accentColor));
    EXPECT_TRUE(areAlike(colorAt("tool.rectangle", -2, 14), groundColor()));

    click("confirm");
    ASSERT_TRUE(control("confirm").hasFocus());
    EXPECT_TRUE(areAlike(colorAt("confirm", -2, 12), groundColor()));
}

TEST_F(ToolbarLooksTest, noStateChangesASize)
{
    const QRect before = control("tool.blur").geometry();
    control("tool.blur").setFocus(Qt::TabFocusReason);
    control("tool.blur").setDown(true);
    m_store->setCurrentTool(AnnotationTool::Blur);
    settle();

    EXPECT_EQ(control("tool.blur").geometry(), before);
}

TEST_F(ToolbarLooksTest, itFollowsThePalette)
{
    QPalette dark = testPalette();
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(200, 80, 0));
    m_host->setPalette(dark);

    EXPECT_TRUE(areAlike(colorAt("tool.arrow", 2, 14), QColor(30, 30, 30)));
    EXPECT_TRUE(areAlike(colorAt("thickness.thin", 9, 1), Qt::white));
    EXPECT_TRUE(areAlike(colorAt("thickness.medium", 9, 2), QColor(200, 80, 0)));
}

TEST_F(ToolbarLooksTest, nothingIsPaintedOutsideTheRoundedStrip)
{
    const QImage drawn = picture();
    const int right = drawn.width() - 1;
    const int bottom = drawn.height() - 1;

    for (const QPoint corner : {QPoint(0, 0), QPoint(1, 1), QPoint(right, 0), QPoint(0, bottom),
                                QPoint(right, bottom), QPoint(right - 1, bottom - 1)})
        EXPECT_EQ(drawn.pixelColor(corner).alpha(), 0) << corner.x() << ", " << corner.y();
    EXPECT_EQ(drawn.pixelColor(drawn.width() / 2, 22).alpha(), 255);
    EXPECT_EQ(drawn.pixelColor(5, 22).alpha(), 255);
}

TEST_F(ToolbarLooksTest, theScreenBehindShowsThroughTheTint)
{
    QImage behind(m_toolbar->size(), QImage::Format_ARGB32_Premultiplied);
    behind.fill(Qt::black);
    m_toolbar->setBackdrop(behind);
    EXPECT_TRUE(areAlike(colorAt("tool.arrow", 2, 14),
                         over(Qt::black, groundColor(), toolbarlook::tintOpacity)));

    m_toolbar->setBackdrop({});
    EXPECT_TRUE(areAlike(colorAt("tool.arrow", 2, 14), groundColor()));
}

TEST_F(ToolbarLooksTest, textStaysLegibleOverBlackAndOverWhite)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double channel) {
            return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
            + 0.0722 * linear(color.blueF());
    };
    const auto contrast = [&](const QColor &one, const QColor &other) {
        const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
        return (light + 0.05) / (dark + 0.05);
    };
    QPalette dark = testPalette();
    dark.setColor(QPalette::Window, QColor(36, 36, 40));
    dark.setColor(QPalette::WindowText, QColor(240, 240, 242));
    for (const QPalette &palette : {testPalette(), dark}) {
        m_host->setPalette(palette);
        for (const QColor &screen : {QColor(Qt::black), QColor(Qt::white)}) {
            QImage behind(m_toolbar->size(), QImage::Format_ARGB32_Premultiplied);
            behind.fill(screen);
            m_toolbar->setBackdrop(behind);
            EXPECT_GE(contrast(colorAt("tool.arrow", 2, 14), palette.color(QPalette::WindowText)),
                      4.5);
        }
    }
}

} // namespace
} // namespace lumacap::tests
