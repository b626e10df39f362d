#include "annotation/shapes/ArrowAnnotation.h"

#include "AnnotationPictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace lumacap::tests {
namespace {

constexpr double lineWidth = 4;
constexpr double headLength = 2 * lineWidth + 15;

TEST(ArrowAnnotation, headIsATriangleOfThirtyDegreesToEachSideOfTheShaft)
{
    const auto [tip, first, second] = arrowHead({0, 0}, {100, 0}, lineWidth);

    EXPECT_EQ(tip, (Point<Canvas>{100, 0}));
    EXPECT_DOUBLE_EQ(first.x, 100 - headLength * std::cos(std::numbers::pi / 6));
    EXPECT_DOUBLE_EQ(first.y, headLength * 0.5);
    EXPECT_DOUBLE_EQ(second.x, first.x);
    EXPECT_DOUBLE_EQ(second.y, -first.y);
}

TEST(ArrowAnnotation, headTurnsWithTheShaft)
{
    const auto [tip, first, second] = arrowHead({50, 80}, {50, 20}, lineWidth);

    EXPECT_NEAR(first.x, 50 + headLength * 0.5, 1e-12);
    EXPECT_NEAR(first.y, 20 + headLength * std::cos(std::numbers::pi / 6), 1e-12);
    EXPECT_NEAR(second.x, 50 - headLength * 0.5, 1e-12);
    EXPECT_NEAR(second.y, first.y, 1e-12);
}

TEST(ArrowAnnotation, withStartAndEndAlikePointsAlongAngleZero)
{
    const auto [tip, first, second] = arrowHead({30, 40}, {30, 40}, lineWidth);

    EXPECT_EQ(tip, (Point<Canvas>{30, 40}));
    EXPECT_DOUBLE_EQ(first.x, 30 - headLength * std::cos(-std::numbers::pi / 6));
    EXPECT_DOUBLE_EQ(first.y, 40 - headLength * std::sin(-std::numbers::pi / 6));
    EXPECT_DOUBLE_EQ(second.x, 30 - headLength * std::cos(std::numbers::pi / 6));
    EXPECT_DOUBLE_EQ(second.y, 40 - headLength * std::sin(std::numbers::pi / 6));
}

TEST(ArrowAnnotation, withStartAndEndAlikeStillDrawsItsHead)
{
    const QImage picture = live(ArrowAnnotation(Qt::red, lineWidth, {40, 40}, {40, 40}), {80, 80});

    EXPECT_EQ(colorAt(picture, 30, 39), QColor(Qt::red));
    EXPECT_EQ(colorAt(picture, 22, 34), QColor(Qt::red));
    EXPECT_EQ(colorAt(picture, 22, 45), QColor(Qt::red));
    EXPECT_EQ(inkBounds(picture).left(), 20); // 40 - 23 cos 30° = 20.08
    EXPECT_EQ(inkBounds(picture).right(), 41) << "the shaft is the dot of its round caps";
}

TEST(ArrowAnnotation, shaftBeginsWithARoundCapAndReachesTheTip)
{
    const QImage picture = live(ArrowAnnotation(Qt::blue, 6, {20, 30}, {90, 30}), {120, 60});

    EXPECT_EQ(colorAt(picture, 20, 27), QColor(Qt::blue));
    EXPECT_EQ(colorAt(picture, 20, 32), QColor(Qt::blue));
    EXPECT_EQ(colorAt(picture, 20, 26).alpha(), 0);
    EXPECT_GT(colorAt(picture, 17, 29).alpha(), 200) << "the cap's middle";
    EXPECT_LT(colorAt(picture, 17, 27).alpha(), 20) << "the cap's corner";
    EXPECT_EQ(colorAt(picture, 91, 29), QColor(Qt::blue)) << "the shaft's own cap beyond the tip";
    EXPECT_EQ(colorAt(picture, 94, 29).alpha(), 0);
}

} // namespace
} // namespace lumacap::tests
