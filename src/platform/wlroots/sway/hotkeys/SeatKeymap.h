#pragma once

#include "platform/wayland/Owned.h"
#include "platform/wlroots/sway/hotkeys/Keymap.h"

#include <QObject>

#include <cstdint>

struct wl_keyboard;
struct wl_keyboard_listener;
struct wl_seat;
struct wl_seat_listener;

namespace lumacap::wayland {
class Connection;
}

namespace lumacap::sway {

/// The keymap of the keyboard that the person types on. It is told once for each keyboard, and no
/// key is: that goes to who has the focus.
class SeatKeymap final : public QObject {
public:
    /// Borrows `connection`, which outlives the object.
    explicit SeatKeymap(wayland::Connection &connection);
    ~SeatKeymap() override;
    Q_DISABLE_COPY_MOVE(SeatKeymap)

    /// The last one told; the system's usual one where there is no keyboard.
    Keymap keymap() const { return Keymap(m_text); }

private:
    static const wl_seat_listener &seatListener();
    static const wl_keyboard_listener &keyboardListener();
    void followKeyboard(bool hasOne);
    void learn(std::uint32_t format, int descriptor, std::uint32_t size);

    wayland::Connection &m_connection;
    wayland::Owned<wl_seat> m_seat;
    wayland::Owned<wl_keyboard> m_keyboard; // ends before its seat
    QByteArray m_text; // a few milliseconds' work to understand, so only when that is wanted
};

} // namespace lumacap::sway
