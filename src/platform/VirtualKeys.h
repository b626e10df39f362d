#pragma once

#include <cstdint>
#include <optional>

namespace lumacap {

// A physical key has two numbers: the macOS virtual key code, which settings store, and the evdev
// code of linux/input-event-codes.h, which the desktop reports. Neither depends on the layout.

namespace virtualkey {
inline constexpr std::uint32_t z = 6;
inline constexpr std::uint32_t returnKey = 36;
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t keypadEnter = 76;

// The other numbering ends at 127 and has none of these. They are ours, from there on: the key with
// the camera on it is what many want to take pictures with.
inline constexpr std::uint32_t print = 128;
inline constexpr std::uint32_t scrollLock = 129;
inline constexpr std::uint32_t pause = 130;
} // namespace virtualkey

/// What X and the toolkit number keys by, less the evdev code.
inline constexpr std::uint32_t scanCodeOffset = 8;

/// Nothing for a code that no key has.
std::optional<std::uint32_t> evdevCode(std::uint32_t virtualKeyCode);

/// Nothing for a key that has no virtual code.
std::optional<std::uint32_t> virtualKeyCode(std::uint32_t evdevCode);

} // namespace lumacap
