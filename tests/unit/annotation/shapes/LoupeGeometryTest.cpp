#include "annotation/shapes/LoupeGeometry.h"

#include <gtest/gtest.h>

#include <QRectF>

namespace lumacap::tests {
namespace {

constexpr Rect<Canvas> canvas{{0, 0}, {1000, 600}};

TEST(LoupeGeometry, loupeGoesToTheRightAtAGapOfTwentyPoints)
{
    const Rect<Canvas> loupe = placedLoupe({{100, 200}, {80, 60}}, 2, canvas);

    EXPECT_EQ(loupe, (Rect<Canvas>{{200, 185}, {120, 90}}));
}

TEST(LoupeGeometry, loupeMayTouchTheRightEdge)
{
    const Rect<Canvas> source{{780, 200}, {80, 60}}; // 860 + 20 + 120 = 1000

    EXPECT_EQ(placedLoupe(source, 2, canvas).minX(), 880);
}

TEST(LoupeGeometry, loupeOfASourceAtTheRightEdgeGoesToTheLeft)
{
    const Rect<Canvas> loupe = placedLoupe({{900, 200}, {100, 60}}, 2, canvas);

    EXPECT_EQ(loupe, (Rect<Canvas>{{730, 185}, {150, 90}}));
}

TEST(LoupeGeometry, loupeOfASourceAlmostAsWideAsTheCanvasGoesBelowAndIsMovedIntoTheCanvas)
{
    const Rect<Canvas> loupe = placedLoupe({{10, 500}, {960, 40}}, 2, canvas);

    EXPECT_EQ(loupe.size, (Size{1440, 60}));
    EXPECT_EQ(loupe.minY(), 500 - 20 - 60);
    EXPECT_EQ(loupe.minX(), 0) << "the minimum edge wins over a loupe wider than the canvas";
}

TEST(LoupeGeometry, loupeBelowTheLowerEdgeIsMovedUp)
{
    const Rect<Canvas> loupe = placedLoupe({{200, 10}, {640, 40}}, 2, canvas);

    EXPECT_EQ(loupe, (Rect<Canvas>{{40, 0}, {960, 60}}));
}

TEST(LoupeGeometry, loupeBesideASourceAtTheTopIsMovedDown)
{
    EXPECT_EQ(placedLoupe({{100, 560}, {80, 40}}, 4, canvas).maxY(), 600);
}

TEST(LoupeGeometry, loupeHigherThanTheCanvasKeepsItsLowerEdge)
{
    const Rect<Canvas> loupe = placedLoupe({{100, 100}, {80, 400}}, 4, canvas);

    EXPECT_EQ(loupe.minY(), 0);
    EXPECT_EQ(loupe.height(), 1200);
}

TEST(LoupeGeometry, loupeRespectsACanvasThatDoesNotBeginAtZero)
{
    const Rect<Canvas> moved{{500, 300}, {400, 300}};

    EXPECT_EQ(placedLoupe({{505, 310}, {60, 200}}, 4, moved).minY(), 300);
    EXPECT_EQ(placedLoupe({{840, 400}, {60, 20}}, 2, moved).minX(), 840 - 20 - 90);
}

struct Zoom {
    const char *name;
    double zoomFactor;
    double size;
};

class LoupeSizeTest : public testing::TestWithParam<Zoom> { };

TEST_P(LoupeSizeTest, isThreeQuartersOfTheZoomButAtLeastOneAndAHalf)
{
    const Rect<Canvas> loupe = placedLoupe({{100, 200}, {40, 20}}, GetParam().zoomFactor, canvas);

    EXPECT_EQ(loupe.size, (Size{40 * GetParam().size, 20 * GetParam().size}));
}

INSTANTIATE_TEST_SUITE_P(Zooms, LoupeSizeTest,
                         testing::Values(Zoom{"one", 1, 1.5}, Zoom{"two", 2, 1.5},
                                         Zoom{"three", 3, 2.25}, Zoom{"four", 4, 3}),
                         [](const auto &instance) { return instance.param.name; });

constexpr Rect<Canvas> rect{{100, 100}, {40, 20}};

TEST(LoupeGeometry, nearestEdgePointIsTheMiddleOfTheNearestSide)
{
    EXPECT_EQ(nearestEdgePoint(rect, {120, 300}), (Point<Canvas>{120, 120}));
    EXPECT_EQ(nearestEdgePoint(rect, {120, 0}), (Point<Canvas>{120, 100}));
    EXPECT_EQ(nearestEdgePoint(rect, {0, 110}), (Point<Canvas>{100, 110}));
    EXPECT_EQ(nearestEdgePoint(rect, {300, 110}), (Point<Canvas>{140, 110}));
}

TEST(LoupeGeometry, ofEquallyNearSidesTheFirstOfTopBottomLeftRightIsTaken)
{
    const Rect<Canvas> square{{0, 0}, {20, 20}};

    EXPECT_EQ(nearestEdgePoint(square, {10, 10}), (Point<Canvas>{10, 20})) << "all four";
    EXPECT_EQ(nearestEdgePoint(square, {-5, -5}), (Point<Canvas>{10, 0})) << "bottom and left";
    EXPECT_EQ(nearestEdgePoint(square, {30, 30}), (Point<Canvas>{10, 20})) << "top and right";
    EXPECT_EQ(nearestEdgePoint(rect, {120, 110}), (Point<Canvas>{120, 120})) << "top and bottom";
    const Rect<Canvas> upright{{0, 0}, {20, 40}};
    EXPECT_EQ(nearestEdgePoint(upright, {10, 20}), (Point<Canvas>{0, 20})) << "left and right";
}

TEST(LoupeGeometry, circleHasTheShorterSideAsDiameter)
{
    const QRectF bounds = loupeOutline(rect, MagnifierShape::Circle).boundingRect();

    EXPECT_EQ(bounds, QRectF(110, 100, 20, 20));
}

TEST(LoupeGeometry, roundedCornersAreATenthOfTheShorterSide)
{
    const QPainterPath outline = loupeOutline(rect, MagnifierShape::RoundedRect);

    EXPECT_EQ(outline.boundingRect(), QRectF(100, 100, 40, 20));
    EXPECT_FALSE(outline.contains(QPointF(100.4, 100.4)));
    EXPECT_TRUE(outline.contains(QPointF(100.7, 100.7))); // 2 (1 - 1/√2) = 0.586 from the corner
    EXPECT_TRUE(outline.contains(QPointF(102.1, 100.1)));
}

TEST(LoupeGeometry, rectangleIsThePlaceItself)
{
    QPainterPath expected;
    expected.addRect(100, 100, 40, 20);

    EXPECT_EQ(loupeOutline(rect, MagnifierShape::Rectangle), expected);
}

} // namespace
} // namespace lumacap::tests
