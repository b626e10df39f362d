#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"

#include "AnnotationPictures.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace lumacap::tests {
namespace {

class ScaleTest : public testing::TestWithParam<int> { };

TEST_P(ScaleTest, aRectanglesStrokeLiesHalfInsideAndHalfOutsideWithSharpCorners)
{
    const int scale = GetParam();
    const RectAnnotation rect(Qt::green, 4, {{20, 10}, {30, 20}});

    QImage expected(QSize(80, 50) * scale, QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.scale(scale, scale);
    painter.fillRect(18, 50 - 32, 34, 24, Qt::green); // y counts from the top here
    painter.fillRect(22, 50 - 28, 26, 16, Qt::transparent);
    painter.end();

    EXPECT_EQ(live(rect, {80, 50}, scale), expected);
}

INSTANTIATE_TEST_SUITE_P(Scales, ScaleTest, testing::Values(1, 2, 3));

TEST(EllipseAnnotation, isInscribedInItsRectangle)
{
    const QImage picture = live(EllipseAnnotation(Qt::red, 2, {{10, 10}, {60, 40}}), {80, 60});

    EXPECT_EQ(inkBounds(picture), QRect(9, 9, 62, 42));
    EXPECT_EQ(colorAt(picture, 40, 29).alpha(), 0) << "the middle";
    EXPECT_EQ(colorAt(picture, 12, 12).alpha(), 0) << "the corner of the rectangle";
    EXPECT_GT(colorAt(picture, 40, 9).alpha(), 200);
    EXPECT_GT(colorAt(picture, 9, 30).alpha(), 200);
}

TEST(FreehandAnnotation, withOnePointDrawsNothing)
{
    EXPECT_TRUE(inkBounds(live(FreehandAnnotation(Qt::red, 6, {{20, 20}}), {40, 40})).isNull());
    EXPECT_TRUE(inkBounds(live(FreehandAnnotation(Qt::red, 6, {}), {40, 40})).isNull());
}

TEST(FreehandAnnotation, withTwoPointsIsASingleSegmentWithRoundCaps)
{
    const QImage picture = live(FreehandAnnotation(Qt::red, 6, {{20, 20}, {60, 20}}), {80, 40});

    const QImage segment = painted({80, 40}, 1, [](QPainter &painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::red, 6, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(20, 20, 60, 20);
    });
    EXPECT_EQ(picture, segment);
    EXPECT_EQ(inkBounds(picture), QRect(17, 17, 46, 6));
}

TEST(FreehandAnnotation, thatDoesNotMoveIsADot)
{
    const QImage picture = live(FreehandAnnotation(Qt::red, 6, {{20, 20}, {20, 20}}), {40, 40});

    EXPECT_EQ(inkBounds(picture), QRect(17, 17, 6, 6));
    EXPECT_EQ(colorAt(picture, 20, 20), QColor(Qt::red));
    EXPECT_LT(colorAt(picture, 17, 17).alpha(), 20);
}

TEST(FreehandAnnotation, ofManyPointsHasNoGapBetweenItsPieces)
{
    std::vector<Point<Canvas>> line;
    for (int i = 0; i <= 150; ++i)
        line.push_back({10 + i * 0.7, 20});
    const QImage picture = live(FreehandAnnotation(Qt::red, 6, line), {125, 40});

    for (int x = 10; x < 115; ++x)
        ASSERT_EQ(colorAt(picture, x, 19), QColor(Qt::red)) << x;
}

TEST(FreehandAnnotation, goesStraightFromPointToPointWithRoundJoins)
{
    const QImage picture =
        live(FreehandAnnotation(Qt::red, 6, {{20, 10}, {20, 50}, {60, 50}}), {80, 60});

    EXPECT_EQ(colorAt(picture, 20, 30), QColor(Qt::red));
    EXPECT_EQ(colorAt(picture, 40, 10), QColor(Qt::red));
    EXPECT_EQ(colorAt(picture, 40, 30).alpha(), 0) << "no smoothing across the corner";
    EXPECT_LT(colorAt(picture, 17, 7).alpha(), 20) << "the join is round";
    EXPECT_GT(colorAt(picture, 18, 8).alpha(), 200);
}

TEST(FreehandAnnotation, crossingItselfStaysFilledOverTheCrossing)
{
    const FreehandAnnotation cross(Qt::red, 6, {{10, 30}, {50, 30}, {50, 50}, {30, 50}, {30, 10}});

    EXPECT_EQ(colorAt(live(cross, {60, 60}), 30, 29), QColor(Qt::red));
}

} // namespace
} // namespace lumacap::tests
