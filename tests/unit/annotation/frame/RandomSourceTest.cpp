#include "ScriptedRandom.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumacap {
namespace {

TEST(SystemRandom, staysInItsRangeAndComesNearBothEnds)
{
    SystemRandom random;
    double least = 3;
    double largest = 2;
    for (int count = 0; count < 10'000; ++count) {
        const double number = random.uniform(2, 3);
        least = std::min(least, number);
        largest = std::max(largest, number);
    }
    EXPECT_GE(least, 2);
    EXPECT_LT(least, 2.01);
    EXPECT_LE(largest, 3);
    EXPECT_GT(largest, 2.99);
}

TEST(SystemRandom, drawsOtherNumbersInEveryObject)
{
    SystemRandom one;
    SystemRandom other;
    EXPECT_NE(one.uniform(0, 1), other.uniform(0, 1));
}

TEST(RandomSource, hasARangeOfOneNumber)
{
    SystemRandom random;
    EXPECT_EQ(random.uniform(0.3, 0.3), 0.3);
}

TEST(RandomSourceDeathTest, stopsTheProgramOnARangeThatEndsBelowItsStart)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ScriptedRandom random(lowerEnd);
    EXPECT_DEATH(random.uniform(30, 29.9), "random range must not end below its start");
    EXPECT_DEATH(random.uniform(30, std::numeric_limits<double>::quiet_NaN()),
                 "random range must not end below its start");
}

} // namespace
} // namespace lumacap
