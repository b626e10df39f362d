#pragma once

#include <cstdint>

/// The device-independent modifier flags of a key event, in the encoding that shortcuts are
/// recorded from. Not all of them are modifiers of a shortcut.
namespace lumacap::eventflag {
inline constexpr std::uint64_t capsLock = 1U << 16U;
inline constexpr std::uint64_t shift = 1U << 17U;
inline constexpr std::uint64_t control = 1U << 18U;
inline constexpr std::uint64_t option = 1U << 19U;
inline constexpr std::uint64_t command = 1U << 20U;
/// A key of the keypad.
inline constexpr std::uint64_t numericPad = 1U << 21U;
/// A function key, an arrow, or one of the keys between letters and keypad.
inline constexpr std::uint64_t function = 1U << 23U;
/// All that don't depend on the device.
inline constexpr std::uint64_t deviceIndependent = 0xFFFF0000;
} // namespace lumacap::eventflag
