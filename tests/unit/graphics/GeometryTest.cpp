#include "graphics/Geometry.h"

#include <gtest/gtest.h>

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

} // namespace lumacap
