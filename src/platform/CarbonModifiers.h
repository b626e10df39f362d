#pragma once

#include <cstdint>

/// Modifier bits of a stored shortcut, in the Carbon encoding; the same mask in memory, on disk and
/// when a shortcut is registered.
namespace lumacap::carbon {
inline constexpr std::uint32_t cmdKey = 0x0100;
inline constexpr std::uint32_t shiftKey = 0x0200;
inline constexpr std::uint32_t optionKey = 0x0800;
inline constexpr std::uint32_t controlKey = 0x1000;
} // namespace lumacap::carbon
