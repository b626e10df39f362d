#pragma once

#include "platform/wayland/Owned.h"

#include <QtGlobal>

#include <cstdint>
#include <optional>

struct wl_keyboard;
struct wl_keyboard_listener;
struct wl_pointer;
struct wl_pointer_listener;
struct wl_seat;
struct wl_seat_listener;

namespace lumacap::wayland {

/// A seat as the toolkit's windows have it: listens to its keyboard and its pointer beside the
/// toolkit, which does not tell what it has heard.
class FocusedSeat {
public:
    /// `seat` is one of the toolkit's connection, and nobody has listened to it yet.
    explicit FocusedSeat(Owned<wl_seat> seat);
    Q_DISABLE_COPY_MOVE(FocusedSeat)
    ~FocusedSeat();

    wl_seat *raw() const { return m_seat.get(); }
    /// Of what the person did last, as the cause of a request that only the program with the focus
    /// may make; none while no window of ours has the keyboard. A click alone is no focus: some
    /// compositors then refuse, without a word.
    std::optional<std::uint32_t> serial() const { return m_serial; }

private:
    static const wl_seat_listener &seatListener();
    static const wl_keyboard_listener &keyboardListener();
    static const wl_pointer_listener &pointerListener();
    void act(std::uint32_t serial);
    void follow(std::uint32_t capabilities);
    void followKeyboard(bool hasOne);
    void followPointer(bool hasOne);

    Owned<wl_seat> m_seat;
    Owned<wl_keyboard> m_keyboard; // these end before their seat
    Owned<wl_pointer> m_pointer;
    std::optional<std::uint32_t> m_serial;
};

} // namespace lumacap::wayland
