#include "platform/x11/hotkeys/ModifierKeys.h"

#include "platform/CarbonModifiers.h"

#include <gmock/gmock.h>

#include <array>
#include <map>

#include <X11/keysym.h>

namespace lumacap::x11 {

namespace {

// Key codes, as good as any others.
constexpr std::uint8_t shift = 50;
constexpr std::uint8_t caps = 66;
constexpr std::uint8_t control = 37;
constexpr std::uint8_t alt = 64;
constexpr std::uint8_t num = 77;
constexpr std::uint8_t scroll = 78;
constexpr std::uint8_t super = 133;
constexpr std::uint8_t altGr = 108;
constexpr std::uint8_t letter = 38;

constexpr std::uint8_t shiftMask = 0x01;
constexpr std::uint8_t lockMask = 0x02;
constexpr std::uint8_t controlMask = 0x04;
constexpr std::uint8_t mod1 = 0x08;
constexpr std::uint8_t mod2 = 0x10;
constexpr std::uint8_t mod3 = 0x20;
constexpr std::uint8_t mod4 = 0x40;
constexpr std::uint8_t mod5 = 0x80;

/// Two keys for each of the eight modifiers.
using Mapping = std::array<std::uint8_t, 16>;

/// As most keyboards have it.
constexpr Mapping usual{shift, 0, caps, 0,      control, 0, alt,   0,
                        num,   0, 0,    scroll, super,   0, altGr, 0};

ModifierKeys keysOf(const Mapping &mapping,
                    const std::map<std::uint8_t, std::uint32_t> &changed = {})
{
    constexpr std::size_t firstKey = 8;
    constexpr std::size_t perKey = 3;
    std::map<std::uint8_t, std::uint32_t> symbols{
        {shift, XK_Shift_L}, {caps, XK_Caps_Lock}, {control, XK_Control_L},
        {alt, XK_Alt_L},     {num, XK_Num_Lock},   {scroll, XK_Scroll_Lock},
        {super, XK_Super_L}, {letter, XK_a},       {altGr, XK_ISO_Level3_Shift}};
    for (const auto &[key, symbol] : changed)
        symbols[key] = symbol;
    std::vector<std::uint32_t> all(perKey * (256 - firstKey));
    for (const auto &[key, symbol] : symbols)
        all.at((key - firstKey) * perKey + 1) = symbol; // and nothing in front of it
    return ModifierKeys::of(mapping, {firstKey, perKey, all});
}

KeyCodes pressed(std::initializer_list<std::uint8_t> keys)
{
    KeyCodes codes;
    for (const std::uint8_t key : keys)
        codes.set(key);
    return codes;
}

} // namespace

TEST(ModifierKeys, findsTheBitsByTheSymbolsOfTheKeys)
{
    const ModifierKeys keys = keysOf(usual);
    EXPECT_EQ(keys.option, mod1);
    EXPECT_EQ(keys.command, mod4);
    EXPECT_EQ(keys.locks, lockMask | mod2 | mod3);
}

TEST(ModifierKeys, doesNotAssumeTheUsualPlaces)
{
    const ModifierKeys keys =
        keysOf({shift, 0, caps, 0, control, 0, super, 0, alt, 0, altGr, 0, scroll, 0, num, 0});
    EXPECT_EQ(keys.option, mod2);
    EXPECT_EQ(keys.command, mod1);
    EXPECT_EQ(keys.locks, lockMask | mod4 | mod5);
    EXPECT_EQ(keys.maskOf(carbon::optionKey | carbon::cmdKey), mod1 | mod2);
}

TEST(ModifierKeys, leavesOutALockThatTheKeyboardHasNoKeyFor)
{
    EXPECT_EQ(keysOf({shift, 0, caps, 0, control, 0, alt}).locks, lockMask);
}

TEST(ModifierKeys, aBitOfAltOrSuperIsNoLockThoughANumLockIsOnIt)
{
    const ModifierKeys keys = keysOf({shift, 0, caps, 0, control, 0, alt, num});
    EXPECT_EQ(keys.option, mod1);
    EXPECT_EQ(keys.locks, lockMask);
}

TEST(ModifierKeys, turnsACarbonMaskIntoTheServers)
{
    const ModifierKeys keys = keysOf(usual);
    EXPECT_EQ(keys.maskOf(0), 0);
    EXPECT_EQ(keys.maskOf(carbon::controlKey | carbon::shiftKey), controlMask | shiftMask);
    EXPECT_EQ(keys.maskOf(carbon::optionKey), mod1);
    EXPECT_EQ(keys.maskOf(carbon::cmdKey), mod4);
    EXPECT_EQ(keys.ofShortcuts(), shiftMask | controlMask | mod1 | mod4);
}

TEST(ModifierKeys, hasNoMaskForAKeyThatTheKeyboardLacks)
{
    const ModifierKeys keys = keysOf({shift, 0, caps, 0, control});
    EXPECT_EQ(keys.maskOf(carbon::cmdKey), std::nullopt);
    EXPECT_EQ(keys.maskOf(carbon::optionKey | carbon::shiftKey), std::nullopt);
    EXPECT_EQ(keys.maskOf(carbon::controlKey), controlMask);
}

TEST(ModifierKeys, tellsWhatIsHeldWithoutTheLocks)
{
    const ModifierKeys keys = keysOf(usual);
    EXPECT_EQ(keys.heldAmong({}), 0);
    EXPECT_EQ(keys.heldAmong(pressed({letter, caps, num, scroll})), 0);
    EXPECT_EQ(keys.heldAmong(pressed({letter, control, shift})), controlMask | shiftMask);
    EXPECT_EQ(keys.heldAmong(pressed({altGr, alt, super})), mod5 | mod1 | mod4);
}

TEST(ModifierKeys, aKeyWhoseSymbolChangesIsAChange)
{
    EXPECT_EQ(keysOf(usual), keysOf(usual, {{letter, XK_b}}));
    EXPECT_NE(keysOf(usual), keysOf(usual, {{scroll, XK_b}}));
}

TEST(ModifierKeys, aKeyBeyondTheSymbolsHasNone)
{
    const std::array<std::uint32_t, 4> symbols{1, 2, 3, 4};
    const KeySymbols two{8, 2, symbols};
    EXPECT_THAT(two.of(9), testing::ElementsAre(3, 4));
    EXPECT_THAT(two.of(10), testing::IsEmpty());
    EXPECT_THAT(two.of(7), testing::IsEmpty());
}

} // namespace lumacap::x11
