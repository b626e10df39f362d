#include "platform/wayland/Seat.h"

#include <wayland-client-protocol.h>

namespace lumacap::wayland {

void endSeat(wl_seat *seat)
{
    if (wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
        wl_seat_release(seat);
    else
        wl_seat_destroy(seat);
}

void endKeyboard(wl_keyboard *keyboard)
{
    if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(keyboard);
    else
        wl_keyboard_destroy(keyboard);
}

void endPointer(wl_pointer *pointer)
{
    if (wl_pointer_get_version(pointer) >= WL_POINTER_RELEASE_SINCE_VERSION)
        wl_pointer_release(pointer);
    else
        wl_pointer_destroy(pointer);
}

} // namespace lumacap::wayland
