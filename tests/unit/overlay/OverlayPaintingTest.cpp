#include "overlay/OverlayPainting.h"

#include "AnnotationPictures.h"
#include "annotation/shapes/RectAnnotation.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

constexpr QSize points(160, 120);

/// A scene over a screen of distinct pixels.
class Overlay {
public:
    explicit Overlay(int scale)
        : m_canvas{{static_cast<double>(points.width()), static_cast<double>(points.height())},
                   scale}
        , frozen{screenOfDistinctPixels(points * scale)}
        , veil{dimmed(frozen)}
    {
    }

    const CanvasMeasure &canvas() const { return m_canvas; }

    QImage shown(const OverlayScene &scene) const
    {
        QImage picture(frozen.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::magenta);
        paintOverlay(picture, frozen, veil, scene, m_canvas, picture.rect());
        return picture;
    }

private:
    CanvasMeasure m_canvas;

public:
    QImage frozen;
    QImage veil;
};

TEST(OverlayPainting, veilLeavesSixtyFivePercentOfEachColour)
{
    const QImage screen = screenOfDistinctPixels({256, 256});
    const QImage veil = dimmed(screen);

    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            const QRgb pixel = veil.pixel(x, y);
            ASSERT_NEAR(qRed(pixel), x * 0.65, 0.8);
            ASSERT_NEAR(qGreen(pixel), y * 0.65, 0.8);
            ASSERT_EQ(qAlpha(pixel), 255);
        }
    }
}

TEST(OverlayPainting, withNothingChosenTheWholeScreenIsDimmed)
{
    for (const int scale : {1, 2}) {
        const Overlay overlay(scale);
        EXPECT_EQ(overlay.shown({}), overlay.veil);
    }
}

TEST(OverlayPainting, insideTheOutlineTheScreenIsClear)
{
    for (const int scale : {1, 2, 3}) {
        const Overlay overlay(scale);
        const QImage picture = overlay.shown({.outline = Rect<Canvas>{{40, 30}, {60, 50}}});

        const QRect clear = QRect(40 + 2, 120 - 80 + 2, 60 - 4, 50 - 4); // inside the line
        const QRect native(clear.topLeft() * scale, clear.size() * scale);
        EXPECT_EQ(picture.copy(native), overlay.frozen.copy(native)) << scale;
        const QRect beside(QPoint(0, 0), QSize(38, 120) * scale);
        EXPECT_EQ(picture.copy(beside), overlay.veil.copy(beside)) << scale;
    }
}

TEST(OverlayPainting, lineAroundTheOutlineIsWhiteAndBlack)
{
    const Overlay overlay(2);
    const QImage picture = overlay.shown({.outline = Rect<Canvas>{{40, 30}, {60, 50}}});

    // Along the lower edge at 30 points, 3 pixels high: of 240 from the top, 180.
    const int y = 180;
    int black = 0;
    for (int at = 0; at < 60; ++at) {
        const QRgb pixel = picture.pixel(2 * (40 + at) + 1, y);
        EXPECT_TRUE(pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255)) << at;
        black += pixel == qRgb(0, 0, 0) ? 1 : 0;
    }
    EXPECT_EQ(black, 36) << "black lies over white: six of ten";
    EXPECT_EQ(picture.pixel(2 * 40 + 1, y), qRgb(255, 255, 255)) << "the black one starts later";
    EXPECT_EQ(picture.pixel(2 * 44 + 1, y), qRgb(0, 0, 0));
}

TEST(OverlayPainting, outlineBetweenPixelsClearsTheNearestWholeOnes)
{
    const CanvasMeasure canvas{{160, 120}, 1};

    EXPECT_EQ(clearPixels({{40.4, 30.4}, {60.3, 50.2}}, canvas), QRect(40, 39, 61, 51));
    EXPECT_EQ(clearPixels({{-10, -10}, {20, 20}}, canvas), QRect(-10, 110, 20, 20));
}

TEST(OverlayPainting, crossLeavesThePixelsAroundThePointerOpen)
{
    const Overlay overlay(2);
    const QImage picture = overlay.shown({.pointer = Point<Canvas>{80, 60}});

    EXPECT_EQ(picture.copy(160 - 8, 120 - 8, 16, 16), overlay.veil.copy(160 - 8, 120 - 8, 16, 16))
        << "four points to each side";
    for (const QPoint arm : {QPoint(0, -16), QPoint(0, 15), QPoint(15, 0), QPoint(-16, 0)})
        EXPECT_EQ(picture.pixel(QPoint(160, 120) + arm), qRgb(255, 255, 255));
    EXPECT_EQ(picture.pixel(160, 120 - 25), overlay.veil.pixel(160, 120 - 25));
    EXPECT_EQ(picture.pixel(160, 120 + 24), overlay.veil.pixel(160, 120 + 24));
    EXPECT_NE(picture.pixel(160 + 1, 120 - 16), overlay.veil.pixel(160 + 1, 120 - 16));
}

TEST(OverlayPainting, guideLinesRunToTheEdgesWithAGapAroundThePointer)
{
    const Overlay overlay(2);
    const QImage cross = overlay.shown({.pointer = Point<Canvas>{80, 60}});
    const QImage picture =
        overlay.shown({.pointer = Point<Canvas>{80, 60}, .guideLines = GuideLines::Shown});

    for (int x = 0; x < 320; ++x) {
        const bool isLine = x < 160 - 40 || x >= 160 + 40;
        EXPECT_EQ(picture.pixel(x, 120) != cross.pixel(x, 120), isLine) << x;
    }
    for (int y = 0; y < 240; ++y) {
        const bool isLine = y < 120 - 40 || y >= 120 + 40;
        EXPECT_EQ(picture.pixel(160, y) != cross.pixel(160, y), isLine) << y;
    }
}

TEST(OverlayPainting, anEndlessOutlineIsClearAndHasNoLine)
{
    const Overlay overlay(1);
    const QImage picture = overlay.shown({.outline = Rect<Canvas>{{40, 30}, {HUGE_VAL, 50}}});

    for (int x = 0; x < points.width(); ++x) {
        const QImage &expected = x < 40 ? overlay.veil : overlay.frozen;
        EXPECT_EQ(picture.pixel(x, 120 - 31), expected.pixel(x, 120 - 31)) << x;
    }
}

TEST(OverlayPainting, labelIsWhiteOnADarkGround)
{
    const Overlay overlay(2);
    const OverlayLabel label{u"100 × 50"_s, {{30, 60}, {100, 50}}};
    const QImage picture = overlay.shown({.label = label});

    const auto background = label.background().value_or(Rect<Canvas>{});
    const int left = static_cast<int>(std::ceil(background.minX() * 2));
    const int middle = 240 - static_cast<int>(background.midY() * 2);
    const QRgb ground = picture.pixel(left + 4, middle);
    EXPECT_NEAR(qRed(ground), qRed(overlay.veil.pixel(left + 4, middle)) * 0.25, 1.5);
    int white = 0;
    for (int x = left; x < background.maxX() * 2; ++x)
        white += qRed(picture.pixel(x, middle)) > 200 ? 1 : 0;
    EXPECT_GT(white, 10);
}

TEST(OverlayPainting, annotationsLieOverEverythingAndTheOneInProgressOnTop)
{
    const Overlay overlay(1);
    const RectAnnotation mark(Qt::red, 6, {{40, 30}, {60, 50}});
    const RectAnnotation inProgress(Qt::green, 6, {{100, 80}, {30, 20}});

    const QImage picture = overlay.shown(
        {.outline = Rect<Canvas>{{40, 30}, {60, 50}},
         .pointer = Point<Canvas>{60, 30},
         .annotations = {{&mark, mark.id(), drawnPixels(mark.drawnAreas(), overlay.canvas())}},
         .inProgress = AnnotationInProgress{&inProgress,
                                            inProgress.id(),
                                            drawnPixels(inProgress.drawnAreas(), overlay.canvas()),
                                            0,
                                            {}}});

    EXPECT_EQ(picture.pixel(68, 90), QColor(Qt::red).rgb()) << "over the cross and the line";
    EXPECT_EQ(picture.pixel(101, 41), QColor(Qt::green).rgb()) << "over the other's corner";
}

} // namespace
} // namespace lumacap::tests
