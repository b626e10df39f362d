#include "overlay/MarchingAnts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace lumacap::tests {
namespace {

using Dashes = std::array<RectGrid, 4>;

constexpr Size canvas{200, 200};

bool anyContains(const std::vector<Interval> &intervals, double place)
{
    return std::ranges::any_of(intervals, [&](const Interval &interval) {
        const auto [low, high] = std::minmax(interval.from, interval.to);
        return low <= place && place < high;
    });
}

bool covers(const Dashes &dashes, Point<Canvas> point)
{
    return std::ranges::any_of(dashes, [&](const RectGrid &side) {
        return anyContains(side.columns, point.x) && anyContains(side.rows, point.y);
    });
}

TEST(MarchingAnts, areSixPointsLongWithGapsOfFourAndOneAndAHalfWide)
{
    const Dashes dashes = antDashes({{100, 50}, {40, 30}}, 0, canvas);

    for (int at = 0; at < 39; ++at)
        EXPECT_EQ(covers(dashes, {100.5 + at, 50}), at % 10 < 6) << at;
    EXPECT_EQ(dashes.front().columns.front(), (Interval{100, 106}));
    EXPECT_EQ(dashes.front().rows, (std::vector{Interval{49.25, 50.75}}));
}

TEST(MarchingAnts, goOnAroundTheCorners)
{
    // 35 points along the lower side end 5 points into a dash, whose last point is on the right.
    const Dashes dashes = antDashes({{0, 0}, {35, 50}}, 0, canvas);

    EXPECT_TRUE(covers(dashes, {34.5, 0}));
    EXPECT_TRUE(covers(dashes, {35.5, -0.5})) << "the corner itself";
    EXPECT_TRUE(covers(dashes, {35, 0.9}));
    EXPECT_FALSE(covers(dashes, {35, 1.5}));
    EXPECT_TRUE(covers(dashes, {35, 5.5}));
    EXPECT_FALSE(covers(dashes, {35, 11.5}));
}

TEST(MarchingAnts, gapAtACornerLeavesItOpen)
{
    const Dashes dashes = antDashes({{0, 0}, {38, 50}}, 0, canvas);

    EXPECT_FALSE(covers(dashes, {38, 0}));
    EXPECT_FALSE(covers(dashes, {38, 1.5}));
    EXPECT_TRUE(covers(dashes, {38, 2.5}));
}

TEST(MarchingAnts, crawlByTheirPhase)
{
    const Dashes dashes = antDashes({{0, 0}, {40, 40}}, 3, canvas);

    for (int at = 0; at < 39; ++at)
        EXPECT_EQ(covers(dashes, {0.5 + at, 0}), (at + 3) % 10 < 6) << at;
}

TEST(MarchingAnts, blackOnesFillTheGapsOfTheWhiteOnes)
{
    const Dashes white = antDashes({{0, 0}, {40, 40}}, 0, canvas);
    const Dashes black = antDashes({{0, 0}, {40, 40}}, 6, canvas);

    for (int at = 0; at < 39; ++at)
        EXPECT_TRUE(covers(white, {0.5 + at, 0}) || covers(black, {0.5 + at, 0})) << at;
}

TEST(MarchingAnts, aroundNothingAreNone)
{
    for (const RectGrid &side : antDashes({{10, 10}, {0, 0}}, 0, canvas))
        EXPECT_TRUE(side.columns.empty() || side.rows.empty());
}

std::size_t countOf(const Dashes &dashes)
{
    std::size_t count = 0;
    for (const RectGrid &side : dashes)
        count += side.columns.size() * side.rows.size();
    return count;
}

TEST(MarchingAnts, ofAnOutlineMuchLargerThanTheCanvasAreThoseThatMayBeSeen)
{
    const Dashes whole = antDashes({{-1000, 50}, {5000, 1000}}, 3, {10000, 10000});
    const Dashes seen = antDashes({{-1000, 50}, {5000, 1000}}, 3, canvas);

    for (int at = 0; at < 200; ++at)
        EXPECT_EQ(covers(seen, {at + 0.5, 50}), covers(whole, {at + 0.5, 50})) << at;
    EXPECT_LT(countOf(seen), 100U);
}

TEST(MarchingAnts, ofAnOutlineBeyondAllMeasureAreFew)
{
    for (const double reach : {1e9, 1e17, 1e300}) {
        EXPECT_LT(countOf(antDashes({{-reach, 50}, {2 * reach, reach}}, 3, canvas)), 200U);
        EXPECT_LT(countOf(antDashes({{10, -reach}, {reach, 2 * reach}}, 3, canvas)), 200U);
    }
}

TEST(MarchingAnts, ofOneSideDoNotOverlap)
{
    for (int width = 1; width < 80; ++width) {
        for (const RectGrid &side : antDashes({{10, 10}, {width / 2.0, 30.25}}, 0, canvas)) {
            for (const auto &intervals : {side.columns, side.rows}) {
                for (std::size_t index = 1; index < intervals.size(); ++index) {
                    const auto [low, high] =
                        std::minmax(intervals[index].from, intervals[index].to);
                    const auto [before, after] =
                        std::minmax(intervals[index - 1].from, intervals[index - 1].to);
                    EXPECT_TRUE(low >= after || high <= before) << width;
                }
            }
        }
    }
}

TEST(MarchingAnts, phaseGoesToSixteenAndBackToZero)
{
    double phase = 0;
    for (int tick = 1; tick <= 16; ++tick) {
        phase = nextAntsPhase(phase);
        EXPECT_EQ(phase, tick);
    }
    EXPECT_EQ(nextAntsPhase(phase), 0);
}

} // namespace
} // namespace lumacap::tests
