#include "platform/x11/hotkeys/KeyPresses.h"

#include <gtest/gtest.h>

namespace lumacap::x11 {

namespace {

constexpr std::uint8_t key = 10;
constexpr std::uint8_t otherKey = 11;

} // namespace

TEST(KeyPresses, everyPressAfterAReleaseIsNew)
{
    KeyPresses presses;
    EXPECT_TRUE(presses.isNew(key, 100));
    presses.release(key, 150);
    EXPECT_TRUE(presses.isNew(key, 151));
}

TEST(KeyPresses, aReleaseAndPressAtOneMomentIsAKeyThatIsHeld)
{
    KeyPresses presses;
    EXPECT_TRUE(presses.isNew(key, 100));
    for (const std::uint32_t time : {700U, 740U, 780U}) {
        presses.release(key, time);
        EXPECT_FALSE(presses.isNew(key, time));
    }
    presses.release(key, 800);
    EXPECT_TRUE(presses.isNew(key, 900));
}

TEST(KeyPresses, aKeyWhoseFirstPressNobodyToldOfIsHeldAllTheSame)
{
    KeyPresses presses;
    presses.release(key, 700);
    EXPECT_FALSE(presses.isNew(key, 700));
}

TEST(KeyPresses, aSecondReportOfAPressIsNoSecondPress)
{
    KeyPresses presses;
    EXPECT_TRUE(presses.isNew(key, 100));
    presses.release(key, 130);
    EXPECT_FALSE(presses.isNew(key, 100));
}

TEST(KeyPresses, anotherKeyAtTheSameMomentIsAnotherPress)
{
    KeyPresses presses;
    presses.release(key, 100);
    EXPECT_TRUE(presses.isNew(otherKey, 100));
}

} // namespace lumacap::x11
