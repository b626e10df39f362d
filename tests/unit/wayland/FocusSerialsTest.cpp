#include "platform/wayland/clipboard/FocusSerials.h"

#include <gtest/gtest.h>

#include <optional>

using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

constexpr FocusSerials::Time now{1h};

} // namespace

TEST(FocusSerials, thereIsNoneBeforeTheFirstFocus)
{
    EXPECT_EQ(FocusSerials().latest(now), std::nullopt);
}

TEST(FocusSerials, theKeyboardsComingCountsUntilAKeyIsPressed)
{
    FocusSerials serials;
    serials.keyboardEntered(7);
    EXPECT_EQ(serials.latest(now + 24h), 7);

    serials.keyPressed(9);
    EXPECT_EQ(serials.latest(now), 9);
}

TEST(FocusSerials, aClickCountsWithoutTheKeyboard)
{
    FocusSerials serials;
    serials.buttonPressed(5);
    EXPECT_EQ(serials.latest(now), 5);
}

TEST(FocusSerials, theLaterOfBothCounts)
{
    FocusSerials serials;
    serials.keyboardEntered(7);
    serials.buttonPressed(8);
    EXPECT_EQ(serials.latest(now), 8);

    serials.keyPressed(9);
    EXPECT_EQ(serials.latest(now), 9);
}

TEST(FocusSerials, theOneAfterTheLargestNumberIsLater)
{
    FocusSerials serials;
    serials.keyboardEntered(0xffffffff);
    serials.buttonPressed(2);
    EXPECT_EQ(serials.latest(now), 2);

    serials.keyPressed(0xfffffffe);
    EXPECT_EQ(serials.latest(now), 2);
}

TEST(FocusSerials, aLostFocusCountsAMomentLonger)
{
    FocusSerials serials;
    serials.keyboardEntered(7);
    serials.keyboardLeft(now);

    EXPECT_EQ(serials.latest(now + 100ms), 7);
    EXPECT_EQ(serials.latest(now + 2s), std::nullopt);
}

TEST(FocusSerials, theKeyboardCountsOnWhenThePointerLeaves)
{
    FocusSerials serials;
    serials.keyboardEntered(7);
    serials.buttonPressed(8);
    serials.pointerLeft(now);

    EXPECT_EQ(serials.latest(now + 2s), 7);
}

TEST(FocusSerials, aFocusThatComesBackCounts)
{
    FocusSerials serials;
    serials.keyboardEntered(7);
    serials.keyboardLeft(now);
    serials.keyboardEntered(12);

    EXPECT_EQ(serials.latest(now + 24h), 12);
}

} // namespace lumacap::wayland
