#include "graphics/Geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

namespace lumacap {

TEST(Rect, looksAtTheStandardizedRectangleWhenASideIsNegative)
{
    const Rect<Global> rect{{10, 20}, {-4, -6}};

    EXPECT_EQ(rect.minX(), 6);
    EXPECT_EQ(rect.maxX(), 10);
    EXPECT_EQ(rect.midX(), 8);
    EXPECT_EQ(rect.minY(), 14);
    EXPECT_EQ(rect.maxY(), 20);
    EXPECT_EQ(rect.midY(), 17);
}

TEST(Rect, containsItsLowerEdgesAndNotItsUpperOnes)
{
    const Rect<Global> rect{{0, 0}, {10, 5}};

    EXPECT_TRUE(rect.contains({0, 0}));
    EXPECT_TRUE(rect.contains({9.999, 4.999}));
    EXPECT_FALSE(rect.contains({10, 0}));
    EXPECT_FALSE(rect.contains({0, 5}));
    EXPECT_FALSE(rect.contains({-0.001, 0}));
}

TEST(Rect, containsTheSamePointsDraggedEitherWay)
{
    const Rect<Global> dragged{{10, 5}, {-10, -5}};

    EXPECT_TRUE(dragged.contains({0, 0}));
    EXPECT_FALSE(dragged.contains({10, 5}));
}

TEST(Rect, standardizedCoversTheSameAreaFromItsLowestCorner)
{
    EXPECT_EQ((Rect<Canvas>{{10, 20}, {-4, -6}}.standardized()), (Rect<Canvas>{{6, 14}, {4, 6}}));
    EXPECT_EQ((Rect<Canvas>{{10, 20}, {4, 6}}.standardized()), (Rect<Canvas>{{10, 20}, {4, 6}}));
}

TEST(Rect, intersectionIsTheAreaBothShare)
{
    const Rect<Canvas> rect{{0, 0}, {10, 10}};

    EXPECT_EQ(rect.intersection({{5, 15}, {20, -10}}), (Rect<Canvas>{{5, 5}, {5, 5}}));
    EXPECT_EQ(rect.intersection({{10, 0}, {5, 5}}), std::nullopt) << "a common edge is no area";
    EXPECT_EQ(rect.intersection({{20, 20}, {5, 5}}), std::nullopt);
    EXPECT_EQ(rect.intersection({{5, 5}, {std::nan(""), 5}}), std::nullopt);
}

TEST(Geometry, windowListsCountFromTheUpperEdgeOfTheFirstScreen)
{
    EXPECT_EQ(toTopLeftGlobal({30, 40}, 1080), (Point<TopLeftGlobal>{30, 1040}));
    EXPECT_EQ(toTopLeftGlobal({-30, 1200}, 1080), (Point<TopLeftGlobal>{-30, -120}));
    EXPECT_EQ(toGlobal(Rect<TopLeftGlobal>{{10, 20}, {30, 40}}, 1080),
              (Rect<Global>{{10, 1020}, {30, 40}}));
    EXPECT_EQ(toGlobal(Rect<TopLeftGlobal>{{40, 60}, {-30, -40}}, 1080),
              (Rect<Global>{{10, 1020}, {30, 40}}));
}

TEST(Rect, insetMovesEveryEdgeInward)
{
    const Rect<Canvas> rect{{10, 10}, {20, 30}};

    EXPECT_EQ(rect.inset(4), (Rect<Canvas>{{14, 14}, {12, 22}}));
    EXPECT_EQ(rect.inset(-1), (Rect<Canvas>{{9, 9}, {22, 32}}));
}

TEST(Rect, isFiniteOnlyWithFourEdgesThatAreNumbers)
{
    EXPECT_TRUE(isFinite(Rect<Canvas>{{1, 2}, {3, 4}}));
    EXPECT_FALSE(isFinite(Rect<Canvas>{{std::nan(""), 2}, {3, 4}}));
    EXPECT_FALSE(isFinite(Rect<Canvas>{{1, 2}, {3, HUGE_VAL}}));
    EXPECT_FALSE(isFinite(Rect<Canvas>{{1.7e308, 2}, {1.7e308, 4}}));
}

} // namespace lumacap
