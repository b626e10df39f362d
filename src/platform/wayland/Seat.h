#pragma once

#include <cstdint>

struct wl_keyboard;
struct wl_pointer;
struct wl_seat;

namespace lumacap::wayland {

/// The version that seats are spoken to in: the first that is let go by a request.
inline constexpr std::uint32_t seatVersion = 5;

/// Let the proxy go, by that request where the compositor knows it.
void endSeat(wl_seat *seat);
void endKeyboard(wl_keyboard *keyboard);
void endPointer(wl_pointer *pointer);

} // namespace lumacap::wayland
