#include "platform/VirtualKeys.h"

#include <gtest/gtest.h>

namespace lumacap::tests {
namespace {

TEST(VirtualKeys, leadBothWaysToTheSameKey)
{
    int keys = 0;
    for (std::uint32_t code = 0; code < 256; ++code) {
        const auto evdev = evdevCode(code);
        if (!evdev)
            continue;
        ++keys;
        EXPECT_EQ(virtualKeyCode(*evdev), code) << code;
    }
    EXPECT_EQ(keys, 119);
    int back = 0;
    for (std::uint32_t evdev = 0; evdev < 768; ++evdev)
        back += virtualKeyCode(evdev) ? 1 : 0;
    EXPECT_EQ(back, keys) << "no two keys share a code";
}

struct KnownKey {
    std::uint32_t virtualKeyCode;
    std::uint32_t evdevCode;
};

TEST(VirtualKeys, areThoseOfTheKeyboardsPlaces)
{
    for (const KnownKey key :
         {KnownKey{0, 30}, KnownKey{6, 44}, KnownKey{10, 86}, KnownKey{18, 2}, KnownKey{20, 4},
          KnownKey{21, 5}, KnownKey{22, 7}, KnownKey{23, 6}, KnownKey{36, 28}, KnownKey{49, 57},
          KnownKey{53, 1}, KnownKey{76, 96}, KnownKey{90, 190}, KnownKey{114, 110},
          KnownKey{122, 59}, KnownKey{123, 105}, KnownKey{126, 103}})
        EXPECT_EQ(evdevCode(key.virtualKeyCode), key.evdevCode) << key.virtualKeyCode;
}

TEST(VirtualKeys, thoseThatTheOtherNumberingLacksHaveCodesBeyondIt)
{
    EXPECT_EQ(evdevCode(virtualkey::print), 99U) << "the key with the camera, or SysRq, on it";
    EXPECT_EQ(evdevCode(virtualkey::scrollLock), 70U);
    EXPECT_EQ(evdevCode(virtualkey::pause), 119U);
    for (const auto code : {virtualkey::print, virtualkey::scrollLock, virtualkey::pause})
        EXPECT_GT(code, 0x7FU);
}

TEST(VirtualKeys, unknownCodesHaveNoKey)
{
    EXPECT_EQ(evdevCode(0x34), std::nullopt);
    EXPECT_EQ(evdevCode(0xFFFFFFFF), std::nullopt);
    EXPECT_EQ(virtualKeyCode(0), std::nullopt);
    EXPECT_EQ(virtualKeyCode(113), std::nullopt) << "mute, a media key";
}

} // namespace
} // namespace lumacap::tests
