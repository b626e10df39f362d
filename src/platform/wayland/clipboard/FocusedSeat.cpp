#include "platform/wayland/clipboard/FocusedSeat.h"

#include "platform/wayland/Seat.h"

#include <utility>

#include <unistd.h>
#include <wayland-client-protocol.h>

namespace lumacap::wayland {

namespace {

FocusedSeat &self(void *data)
{
    return *static_cast<FocusedSeat *>(data);
}

} // namespace

FocusedSeat::FocusedSeat(Owned<wl_seat> seat)
    : m_seat(std::move(seat))
{
    wl_seat_add_listener(raw(), &seatListener(), this);
}

FocusedSeat::~FocusedSeat() = default;

const wl_seat_listener &FocusedSeat::seatListener()
{
    static constexpr wl_seat_listener listener{
        .capabilities = [](void *data, wl_seat * /*seat*/,
                           std::uint32_t capabilities) { self(data).follow(capabilities); },
        .name = [](void * /*data*/, wl_seat * /*seat*/, const char * /*name*/) {},
    };
    return listener;
}

const wl_keyboard_listener &FocusedSeat::keyboardListener()
{
    static constexpr wl_keyboard_listener listener{
        .keymap = [](void *, wl_keyboard *, std::uint32_t, int descriptor,
                     std::uint32_t) { close(descriptor); },
        .enter = [](void *data, wl_keyboard *, std::uint32_t serial, wl_surface *,
                    wl_array *) { self(data).m_serial = serial; },
        .leave = [](void *data, wl_keyboard *, std::uint32_t,
                    wl_surface *) { self(data).m_serial.reset(); },
        .key =
            [](void *data, wl_keyboard *, std::uint32_t serial, std::uint32_t, std::uint32_t,
               std::uint32_t state) {
                if (state == WL_KEYBOARD_KEY_STATE_PRESSED)
                    self(data).act(serial);
            },
        .modifiers = [](void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t,
                        std::uint32_t, std::uint32_t) {},
        .repeat_info = [](void *, wl_keyboard *, std::int32_t, std::int32_t) {},
    };
    return listener;
}

const wl_pointer_listener &FocusedSeat::pointerListener()
{
    // By name, for later versions of the library have more of them, which this seat does not send.
    static const wl_pointer_listener listener = [] {
        wl_pointer_listener events{};
        events.enter = [](void *, wl_pointer *, std::uint32_t, wl_surface *, wl_fixed_t,
                          wl_fixed_t) { };
        events.leave = [](void *, wl_pointer *, std::uint32_t, wl_surface *) { };
        events.motion = [](void *, wl_pointer *, std::uint32_t, wl_fixed_t, wl_fixed_t) { };
        events.button = [](void *data, wl_pointer *, std::uint32_t serial, std::uint32_t,
                           std::uint32_t, std::uint32_t state) {
            if (state == WL_POINTER_BUTTON_STATE_PRESSED)
                self(data).act(serial);
        };
        events.axis = [](void *, wl_pointer *, std::uint32_t, std::uint32_t, wl_fixed_t) { };
        events.frame = [](void *, wl_pointer *) { };
        events.axis_source = [](void *, wl_pointer *, std::uint32_t) { };
        events.axis_stop = [](void *, wl_pointer *, std::uint32_t, std::uint32_t) { };
        events.axis_discrete = [](void *, wl_pointer *, std::uint32_t, std::int32_t) { };
        return events;
    }();
    return listener;
}

void FocusedSeat::act(std::uint32_t serial)
{
    if (m_serial)
        m_serial = serial;
}

void FocusedSeat::follow(std::uint32_t capabilities)
{
    followKeyboard((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
    followPointer((capabilities & WL_SEAT_CAPABILITY_POINTER) != 0);
}

void FocusedSeat::followKeyboard(bool hasOne)
{
    if (!hasOne) {
        m_keyboard.reset();
        m_serial.reset();
    } else if (m_keyboard == nullptr) {
        m_keyboard = owned(wl_seat_get_keyboard(raw()), &endKeyboard);
        wl_keyboard_add_listener(m_keyboard.get(), &keyboardListener(), this);
    }
}

void FocusedSeat::followPointer(bool hasOne)
{
    if (!hasOne) {
        m_pointer.reset();
    } else if (m_pointer == nullptr) {
        m_pointer = owned(wl_seat_get_pointer(raw()), &endPointer);
        wl_pointer_add_listener(m_pointer.get(), &pointerListener(), this);
    }
}

} // namespace lumacap::wayland
