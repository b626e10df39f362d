#include "graphics/BackingFactor.h"

#include <gtest/gtest.h>

namespace lumacap {

TEST(BackingFactor, isTheScaleRoundedToTheNearestWholeNumber)
{
    EXPECT_EQ(backingFactor(1), 1);
    EXPECT_EQ(backingFactor(1.25), 1);
    EXPECT_EQ(backingFactor(1.75), 2);
    EXPECT_EQ(backingFactor(3), 3);
}

TEST(BackingFactor, roundsHalvesUp)
{
    EXPECT_EQ(backingFactor(1.5), 2);
    EXPECT_EQ(backingFactor(2.5), 3);
}

TEST(BackingFactor, isAtLeastOne)
{
    EXPECT_EQ(backingFactor(0.4), 1);
    EXPECT_EQ(backingFactor(0), 1);
}

} // namespace lumacap
