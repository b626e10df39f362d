#include "annotation/shapes/MagnifierAnnotation.h"

#include "AnnotationPictures.h"
#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/Text.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace lumacap::tests {
namespace {

constexpr QSize canvas(200, 120);

std::unique_ptr<MagnifierAnnotation> magnifier(const Rect<Canvas> &source,
                                               const Rect<Canvas> &loupe, MagnifierShape shape)
{
    auto annotation = std::make_unique<MagnifierAnnotation>(Qt::blue, 4, source, 2, shape);
    annotation->loupeOrigin = loupe.origin;
    annotation->loupeSize = loupe.size;
    return annotation;
}

QImage sourceOutline(const Rect<Canvas> &source)
{
    return painted(canvas, 1, [&](QPainter &painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(outlinePen(withAlpha(Qt::blue, 0.5), 1.5));
        painter.drawRect(toQRectF(source));
    });
}

TEST(MagnifierAnnotation, isPlacedByItsSourceItsZoomAndTheCanvas)
{
    MagnifierAnnotation annotation(Qt::blue, 4, {{140, 260}, {-40, -20}}, 4,
                                   MagnifierShape::Circle);

    annotation.autoPlaceLoupe({{0, 0}, {1000, 600}});

    EXPECT_EQ(annotation.loupeOrigin, (Point<Canvas>{160, 220}));
    EXPECT_EQ(annotation.loupeSize, (Size{120, 60}));
}

TEST(MagnifierAnnotation, withASourceOfFourByFourDrawsNothingAtAll)
{
    const auto annotation =
        magnifier({{10, 10}, {4, 4}}, {{60, 20}, {80, 80}}, MagnifierShape::Circle);
    const QImage screen = screenOfDistinctPixels(canvas);

    EXPECT_TRUE(inkBounds(live(*annotation, canvas)).isNull());
    EXPECT_EQ(finished(*annotation, screen), screen);
}

TEST(MagnifierAnnotation, withALoupeOfThreeByThreeDrawsTheSourcesOutlineOnly)
{
    const Rect<Canvas> source{{10, 10}, {10, 10}};
    const auto annotation = magnifier(source, {{60, 20}, {3, 3}}, MagnifierShape::Circle);

    EXPECT_EQ(live(*annotation, canvas), sourceOutline(source));
    QImage screen(canvas, QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::transparent);
    EXPECT_EQ(finished(*annotation, screen), sourceOutline(source));
}

TEST(MagnifierAnnotation, withALoupeTooLowDrawsTheSourcesOutlineOnly)
{
    const Rect<Canvas> source{{10, 10}, {10, 10}};
    for (const Size size : {Size{50, 4}, Size{4, 50}}) {
        const auto annotation = magnifier(source, {{60, 20}, size}, MagnifierShape::Rectangle);
        EXPECT_EQ(live(*annotation, canvas), sourceOutline(source));
    }
}

TEST(MagnifierAnnotation, drawsSourceConnectorLoupeOutlineAndBadgeInThisOrder)
{
    // All of them meet: the loupe lies over the source and over the connector's way.
    QImage screen(canvas, QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::white);
    MagnifierAnnotation annotation(Qt::blue, 4, {{10, 10}, {60, 60}}, 2, MagnifierShape::Rectangle);
    annotation.loupeOrigin = {20, 2};
    annotation.loupeSize = {45, 50};

    const QImage picture = finished(annotation, screen);

    EXPECT_EQ(picture.pixel(41, 120 - 30), qRgb(255, 255, 255)) << "the loupe hides the connector";
    EXPECT_EQ(picture.pixel(30, 120 - 11), qRgb(255, 255, 255)) << "and the source's outline";
    EXPECT_EQ(picture.pixel(20, 120 - 30), QColor(Qt::blue).rgb()) << "its own outline is on top";
    EXPECT_EQ(picture.pixel(40, 120 - 53), QColor(Qt::blue).rgb()) << "also of the connector's end";
    EXPECT_LT(qBlue(picture.pixel(62, 120 - 12)), 140) << "the badge lies over the outline's edge";
}

TEST(MagnifierAnnotation, liveLoupeIsAnOutlineOnePointWiderThanItsStroke)
{
    const QImage picture = live(
        *magnifier({{10, 10}, {20, 20}}, {{60, 20}, {80, 60}}, MagnifierShape::Rectangle), canvas);

    // 5 points around the edge at 60: 57.5 to 62.5
    EXPECT_EQ(colorAt(picture, 58, 70), QColor(Qt::blue));
    EXPECT_EQ(colorAt(picture, 61, 70), QColor(Qt::blue));
    EXPECT_EQ(colorAt(picture, 63, 70).alpha(), 0);
    EXPECT_EQ(colorAt(picture, 100, 70).alpha(), 0);
    EXPECT_EQ(inkBounds(picture).right(), 142);
}

TEST(MagnifierAnnotation, connectorIsDashedSixOnFourOffFromEdgeToEdge)
{
    // From (30, 20) to (130, 20): 100 points, ten dashes.
    const QImage picture = live(
        *magnifier({{10, 10}, {20, 20}}, {{130, 10}, {20, 20}}, MagnifierShape::Rectangle), canvas);

    for (int x = 32; x < 127; ++x) {
        const bool isOn = (x - 30) % 10 < 6;
        ASSERT_EQ(colorAt(picture, x, 120 - 20).alphaF() > 0.65F, isOn) << x;
        ASSERT_EQ(colorAt(picture, x, 120 - 21).alphaF() > 0.65F, isOn) << x; // 2 points wide
        ASSERT_EQ(colorAt(picture, x, 120 - 22).alpha(), 0) << x;
    }
    EXPECT_NEAR(colorAt(picture, 42, 100).alphaF(), 0.7, 0.01);
}

TEST(MagnifierAnnotation, connectorIsAtLeastOneAndAHalfPointsWide)
{
    MagnifierAnnotation annotation(Qt::blue, 2, {{10, 10}, {20, 20}}, 2, MagnifierShape::Rectangle);
    annotation.loupeOrigin = {130, 10};
    annotation.loupeSize = {20, 20};

    const QImage picture = live(annotation, canvas, 2);

    // 3 pixels around the row at 20 points: of 240 from the top, 200; 198.5 to 201.5
    EXPECT_NEAR(colorAt(picture, 84, 199).alphaF(), 0.7, 0.01);
    EXPECT_NEAR(colorAt(picture, 84, 200).alphaF(), 0.7, 0.01);
    EXPECT_NEAR(colorAt(picture, 84, 198).alphaF(), 0.35, 0.02);
    EXPECT_EQ(colorAt(picture, 84, 197).alpha(), 0);
}

QImage uniformScreen(QColor color)
{
    QImage screen(canvas, QImage::Format_ARGB32_Premultiplied);
    screen.fill(color);
    return screen;
}

class LoupeShapeTest : public testing::TestWithParam<MagnifierShape> { };

TEST_P(LoupeShapeTest, loupeShowsItsSourceInsideItsOutlineOnly)
{
    QImage screen = uniformScreen(Qt::white);
    QPainter(&screen).fillRect(10, 120 - 40, 30, 30, Qt::green); // the source, and nothing else
    const auto annotation = magnifier({{10, 10}, {30, 30}}, {{60, 20}, {80, 60}}, GetParam());

    const QImage picture = finished(*annotation, screen);

    const auto isGreen = [&](int x, int y) {
        return picture.pixel(x, y) == QColor(Qt::green).rgb();
    };
    EXPECT_TRUE(isGreen(100, 70)) << "the middle";
    EXPECT_TRUE(isGreen(76, 70));
    EXPECT_EQ(isGreen(64, 70), GetParam() != MagnifierShape::Circle);
    EXPECT_EQ(isGreen(63, 120 - 80 + 3), GetParam() == MagnifierShape::Rectangle) << "the corner";
    EXPECT_EQ(picture.pixel(150, 70), QColor(Qt::white).rgb()) << "outside";
}

INSTANTIATE_TEST_SUITE_P(Shapes, LoupeShapeTest,
                         testing::Values(MagnifierShape::Circle, MagnifierShape::RoundedRect,
                                         MagnifierShape::Rectangle));

TEST(MagnifierAnnotation, loupeShowsItsSourceUprightAndEnlarged)
{
    QImage screen = uniformScreen(Qt::white);
    QPainter painter(&screen);
    painter.fillRect(10, 80, 15, 15, Qt::red); // upper left quarter of the source
    painter.fillRect(25, 80, 15, 15, Qt::green);
    painter.fillRect(10, 95, 15, 15, Qt::blue);
    painter.fillRect(25, 95, 15, 15, Qt::black);
    painter.end();
    const auto annotation =
        magnifier({{10, 10}, {30, 30}}, {{80, 20}, {90, 60}}, MagnifierShape::Rectangle);

    const QImage picture = finished(*annotation, screen);

    EXPECT_EQ(picture.pixel(100, 55), QColor(Qt::red).rgb());
    EXPECT_EQ(picture.pixel(150, 55), QColor(Qt::green).rgb());
    EXPECT_EQ(picture.pixel(100, 85), QColor(Qt::blue).rgb());
    EXPECT_EQ(picture.pixel(150, 80), QColor(Qt::black).rgb());
    EXPECT_EQ(picture.pixel(123, 55), QColor(Qt::red).rgb()) << "just left of the middle";
    EXPECT_EQ(picture.pixel(127, 55), QColor(Qt::green).rgb()) << "just right of it";
}

TEST(MagnifierAnnotation, loupeAcrossTheScreensEdgeShowsWhatThereIsOverAllOfIt)
{
    QImage screen = uniformScreen(Qt::green);
    const auto annotation =
        magnifier({{-30, 10}, {40, 30}}, {{80, 20}, {90, 60}}, MagnifierShape::Rectangle);

    EXPECT_EQ(finished(*annotation, screen).pixel(90, 70), QColor(Qt::green).rgb());
}

TEST(MagnifierAnnotation, ofASourceBesideTheScreenDrawsWhatItDrawsLive)
{
    const auto annotation =
        magnifier({{-60, 10}, {40, 30}}, {{80, 20}, {90, 60}}, MagnifierShape::RoundedRect);
    QImage transparent(canvas, QImage::Format_ARGB32_Premultiplied);
    transparent.fill(Qt::transparent);

    EXPECT_EQ(finished(*annotation, transparent), live(*annotation, canvas));
}

TEST(MagnifierAnnotation, badgeShowsTheZoomAtTheLowerRightOfTheLoupe)
{
    const auto annotation =
        magnifier({{10, 10}, {30, 30}}, {{60, 20}, {80, 60}}, MagnifierShape::Rectangle);
    annotation->zoomFactor = 3.9;

    const QImage picture = finished(*annotation, uniformScreen(Qt::green), 1);

    const Text label(QStringLiteral("3x"), 10, FontWeight::Bold);
    const auto [width, height] = label.size();
    const QImage badge = painted(canvas, 1, [&](QPainter &painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(QRectF(0, 0, 200, 120), Qt::green);
        const Rect<Canvas> plate{{140 - width - 8, 24}, {width + 6, height + 2}};
        fillRects(painter, std::span(&plate, 1), withAlpha(Qt::black, 0.6));
        label.draw(painter, {140 - width - 5, 25}, Qt::white);
    });
    const QRect place(static_cast<int>(140 - width - 12), 120 - static_cast<int>(24 + height + 6),
                      static_cast<int>(width) + 8, static_cast<int>(height) + 6);
    EXPECT_EQ(picture.copy(place), badge.copy(place));
}

} // namespace
} // namespace lumacap::tests
