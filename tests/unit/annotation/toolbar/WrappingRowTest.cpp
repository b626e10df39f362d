#include "annotation/toolbar/WrappingRow.h"

#include <gmock/gmock.h>

#include <random>

namespace lumacap::tests {
namespace {

constexpr RowItem divider{RowItemKind::Divider, {1, 22}};

constexpr RowItem control(double width, double height = 28)
{
    return {RowItemKind::Control, {width, height}};
}

TEST(WrappingRow, liesInOneRowWhereItFitsExactly)
{
    const std::array items{control(28), divider, control(16, 16), control(18, 4)};

    const RowPlacement row = placedInRows(items, 28 + 1 + 16 + 18 + 30, 10);

    EXPECT_EQ(row.size, (Size{93, 28}));
    EXPECT_EQ(row.frames[0], QRectF(0, 0, 28, 28));
    EXPECT_EQ(row.frames[1], QRectF(38, 3, 1, 22));
    EXPECT_EQ(row.frames[2], QRectF(49, 6, 16, 16));
    EXPECT_EQ(row.frames[3], QRectF(75, 12, 18, 4));
}

TEST(WrappingRow, breaksBetweenGroupsAndHidesTheDividerThere)
{
    const std::array items{control(28), control(28), divider, control(28), control(28)};

    const RowPlacement rows = placedInRows(items, 100, 10);

    EXPECT_EQ(rows.size, (Size{66, 66}));
    EXPECT_EQ(rows.frames[1], QRectF(38, 0, 28, 28));
    EXPECT_EQ(rows.frames[2], std::nullopt);
    EXPECT_EQ(rows.frames[3], QRectF(0, 38, 28, 28));
}

TEST(WrappingRow, breaksInsideAGroupThatAloneIsTooWide)
{
    const std::array items{control(30), control(30), control(30)};

    const RowPlacement rows = placedInRows(items, 75, 10);

    EXPECT_EQ(rows.size, (Size{70, 66}));
    EXPECT_EQ(rows.frames[2], QRectF(20, 38, 30, 28)) << "in the middle";
}

TEST(WrappingRow, anItemWiderThanAllHasARowOfItsOwn)
{
    const std::array items{control(30), control(90), control(30)};

    const RowPlacement rows = placedInRows(items, 50, 10);

    EXPECT_EQ(rows.size, (Size{90, 104}));
}

TEST(WrappingRow, makesItsRowsEven)
{
    const std::array items{control(40), divider, control(40), divider,
                           control(40), divider, control(40)};

    const RowPlacement rows = placedInRows(items, 170, 10); // three of four would fit in a row

    EXPECT_EQ(rows.size.width, 101);
    EXPECT_EQ(rows.frames[4], QRectF(0, 38, 40, 28));
}

TEST(WrappingRow, ofNothingIsNothing)
{
    EXPECT_EQ(placedInRows({}, 100, 10).size, (Size{0, 0}));
}

TEST(WrappingRow, answersTheSameForTheWidthItAnswered)
{
    std::mt19937 random(7); // NOLINT(bugprone-random-generator-seed): the same cases every time
    for (int round = 0; round < 300; ++round) {
        std::array<RowItem, 25> items;
        for (RowItem &item : items)
            item = random() % 4 == 0 ? divider : control(10 + static_cast<double>(random() % 60));
        const RowPlacement once = placedInRows(items, 60 + static_cast<double>(random() % 900), 10);
        const RowPlacement again = placedInRows(items, once.size.width, 10);
        EXPECT_EQ(once.frames, again.frames);
    }
}

} // namespace
} // namespace lumacap::tests
