#include "capture/WindowDetector.h"

#include "fakes/FakeWindowList.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace lumacap {

namespace {

constexpr std::int32_t own = 100;
constexpr std::int32_t other = 200;

constexpr Rect<TopLeftGlobal> usualBounds{{10, 20}, {40, 30}};

/// An ordinary window of `other`.
WindowRecord ordinary(std::int64_t number, const Rect<TopLeftGlobal> &bounds = usualBounds)
{
    return {.layer = 0,
            .windowNumber = number,
            .ownerPID = other,
            .bounds = bounds,
            .ownerName = u"Editor"_s,
            .windowName = u"Letter"_s};
}

WindowRecord sized(Size size)
{
    return ordinary(1, {usualBounds.origin, size});
}

WindowRecord onLayer(int layer)
{
    WindowRecord record = ordinary(1);
    record.layer = layer;
    return record;
}

struct WindowDetectorTest : testing::Test {
    WindowDetectorTest() { list.isFollowing = true; }

    std::vector<std::uint32_t> numbers(std::optional<std::int32_t> excluding = std::nullopt)
    {
        std::vector<std::uint32_t> numbers;
        for (const DetectedWindow &window : detector.getVisibleWindows(excluding))
            numbers.push_back(window.windowID);
        return numbers;
    }

    bool lists(const WindowRecord &record)
    {
        list.all = {record};
        return !numbers().empty();
    }

    std::uint32_t at(Point<TopLeftGlobal> point,
                     std::optional<std::int32_t> excluding = std::nullopt)
    {
        return detector.windowAtPoint(point, excluding).value_or(DetectedWindow{}).windowID;
    }

    FakeWindowList list;
    WindowDetector detector{list};
};

} // namespace

TEST_F(WindowDetectorTest, tellsEveryFactOfAnOrdinaryWindow)
{
    list.all = {ordinary(7)};

    EXPECT_THAT(detector.getVisibleWindows(std::nullopt),
                ElementsAre(DetectedWindow{.windowID = 7,
                                           .frame = {{10, 20}, {40, 30}},
                                           .ownerName = u"Editor"_s,
                                           .ownerPID = other,
                                           .windowName = u"Letter"_s,
                                           .layer = 0}));
}

TEST_F(WindowDetectorTest, keepsTheOrderOfTheDesktop)
{
    list.all = {ordinary(5), ordinary(9), ordinary(2)};

    EXPECT_THAT(numbers(), ElementsAre(5U, 9U, 2U));
}

TEST_F(WindowDetectorTest, listsNothingWhereTheDesktopTellsNothing)
{
    EXPECT_THAT(detector.getVisibleWindows(std::nullopt), IsEmpty());
    EXPECT_EQ(detector.windowAtPoint({15, 25}, std::nullopt), std::nullopt);
}

TEST_F(WindowDetectorTest, listsNothingBeforeTheListIsPreparedAndAfterItIsReleased)
{
    list.all = {ordinary(1)};
    list.isFollowing = false;
    EXPECT_THAT(numbers(), IsEmpty());

    list.isFollowing = true;
    EXPECT_THAT(numbers(), ElementsAre(1U));

    list.release();
    EXPECT_THAT(numbers(), IsEmpty());
}

TEST_F(WindowDetectorTest, listsLayersFromZeroToThree)
{
    for (const int layer : {0, 1, 2, 3})
        EXPECT_TRUE(lists(onLayer(layer))) << layer;
    EXPECT_EQ(detector.getVisibleWindows(std::nullopt).front().layer, 3);
}

TEST_F(WindowDetectorTest, skipsLayersFromFourUpAndNegativeOnes)
{
    for (const int layer :
         {4, 25, std::numeric_limits<int>::max(), -1, -3, std::numeric_limits<int>::min()})
        EXPECT_FALSE(lists(onLayer(layer))) << layer;
}

TEST_F(WindowDetectorTest, skipsWindowsWithoutALayer)
{
    WindowRecord record = ordinary(1);
    record.layer = std::nullopt;

    EXPECT_FALSE(lists(record));
}

TEST_F(WindowDetectorTest, skipsWindowsWithoutANumberOfThirtyTwoUnsignedBits)
{
    WindowRecord record = ordinary(1);
    for (const std::int64_t number :
         {std::int64_t{0}, std::int64_t{std::numeric_limits<std::uint32_t>::max()}}) {
        record.windowNumber = number;
        EXPECT_TRUE(lists(record)) << number;
    }
    for (const std::int64_t number :
         {std::int64_t{-1}, std::int64_t{1} << 32, std::numeric_limits<std::int64_t>::max()}) {
        record.windowNumber = number;
        EXPECT_FALSE(lists(record)) << number;
    }
    record.windowNumber = std::nullopt;
    EXPECT_FALSE(lists(record));
}

TEST_F(WindowDetectorTest, skipsWindowsWithoutAProcessOfThirtyTwoSignedBits)
{
    WindowRecord record = ordinary(1);
    for (const std::int64_t process : {std::int64_t{std::numeric_limits<std::int32_t>::min()},
                                       std::int64_t{std::numeric_limits<std::int32_t>::max()}}) {
        record.ownerPID = process;
        EXPECT_TRUE(lists(record)) << process;
    }
    for (const std::int64_t process :
         {std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1,
          std::int64_t{std::numeric_limits<std::int32_t>::min()} - 1}) {
        record.ownerPID = process;
        EXPECT_FALSE(lists(record)) << process;
    }
    record.ownerPID = std::nullopt;
    EXPECT_FALSE(lists(record));
}

TEST_F(WindowDetectorTest, skipsWindowsWithoutBounds)
{
    WindowRecord record = ordinary(1);
    record.bounds = std::nullopt;

    EXPECT_FALSE(lists(record));
}

TEST_F(WindowDetectorTest, skipsBoundsThatAreNoNumbers)
{
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        for (const auto &bounds : {Rect<TopLeftGlobal>{{value, 20}, {40, 30}},
                                   Rect<TopLeftGlobal>{{10, value}, {40, 30}},
                                   Rect<TopLeftGlobal>{{10, 20}, {value, 30}},
                                   Rect<TopLeftGlobal>{{10, 20}, {40, value}}}) {
            EXPECT_FALSE(lists(ordinary(1, bounds))) << value;
        }
    }
}

TEST_F(WindowDetectorTest, skipsWindowsOnePointWideOrLess)
{
    EXPECT_FALSE(lists(sized({1, 30})));
    EXPECT_FALSE(lists(sized({0, 30})));
    EXPECT_FALSE(lists(sized({-40, 30})));
    EXPECT_TRUE(lists(sized({1.5, 30})));
}

TEST_F(WindowDetectorTest, skipsWindowsOnePointHighOrLess)
{
    EXPECT_FALSE(lists(sized({40, 1})));
    EXPECT_FALSE(lists(sized({40, 0})));
    EXPECT_FALSE(lists(sized({40, -30})));
    EXPECT_TRUE(lists(sized({40, 1.5})));
}

TEST_F(WindowDetectorTest, leavesOutTheWindowsOfTheExcludedProcess)
{
    list.all = {ordinary(1), ordinary(2), ordinary(3)};
    list.all[0].ownerPID = own;
    list.all[2].ownerPID = own;

    EXPECT_THAT(numbers(own), ElementsAre(2U));
    EXPECT_THAT(numbers(other), ElementsAre(1U, 3U));
}

TEST_F(WindowDetectorTest, leavesOutNobodyWhenNoProcessIsExcluded)
{
    list.all = {ordinary(1), ordinary(2)};
    list.all[0].ownerPID = own;

    EXPECT_THAT(numbers(std::nullopt), ElementsAre(1U, 2U));
}

TEST_F(WindowDetectorTest, listsAWindowWithoutAnOwnersNameWithAnEmptyOne)
{
    list.all = {ordinary(1)};
    list.all[0].ownerName = std::nullopt;

    EXPECT_EQ(detector.getVisibleWindows(std::nullopt).front().ownerName, QString());
}

TEST_F(WindowDetectorTest, listsAWindowWithoutATitleWithNone)
{
    list.all = {ordinary(1)};
    list.all[0].windowName = std::nullopt;

    EXPECT_EQ(detector.getVisibleWindows(std::nullopt).front().windowName, std::nullopt);
}

TEST_F(WindowDetectorTest, aPointInTwoWindowsIsInTheFrontmost)
{
    list.all = {ordinary(1), ordinary(2, {{30, 30}, usualBounds.size})};

    EXPECT_EQ(at({40, 40}), 1U);
    EXPECT_EQ(at({60, 55}), 2U);
    std::ranges::swap(list.all[0], list.all[1]);
    EXPECT_EQ(at({40, 40}), 2U);
}

TEST_F(WindowDetectorTest, aPointIsInTheWindowBehindAnExcludedOrSkippedOne)
{
    list.all = {onLayer(25), ordinary(2), ordinary(3)};
    list.all[1].ownerPID = own;

    EXPECT_EQ(at({15, 25}, own), 3U);
}

TEST_F(WindowDetectorTest, theLeftAndTopEdgesAreInsideTheOthersAreNot)
{
    list.all = {ordinary(1)};

    EXPECT_EQ(at({10, 20}), 1U);
    EXPECT_EQ(at({49.5, 49.5}), 1U);
    EXPECT_EQ(at({50, 30}), 0U);
    EXPECT_EQ(at({20, 50}), 0U);
    EXPECT_EQ(at({9.5, 30}), 0U);
    EXPECT_EQ(at({20, 19.5}), 0U);
}

TEST_F(WindowDetectorTest, readsTheListAnewAtEachQuestion)
{
    list.all = {ordinary(1)};
    EXPECT_EQ(at({15, 25}), 1U);

    list.all = {ordinary(2)};
    EXPECT_EQ(at({15, 25}), 2U);
    EXPECT_THAT(numbers(), ElementsAre(2U));
    EXPECT_EQ(list.questions, 3);
}

} // namespace lumacap
