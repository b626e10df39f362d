#pragma once

#include <cstdint>

/// The numbers of the program's shortcuts.
namespace lumacap::hotkey {
inline constexpr std::uint32_t fullScreen = 1;
inline constexpr std::uint32_t selection = 2;
} // namespace lumacap::hotkey
