#pragma once

#include "platform/wayland/Owned.h"

#include <QByteArray>
#include <QObject>

#include <cstdint>

struct wl_keyboard;
struct wl_keyboard_listener;
struct wl_seat;
struct wl_seat_listener;

namespace lumacap::wayland {

class Connection;

/// The keyboard that the person types on, as far as it is told to everybody: its keymap, and no
/// key, which goes to who has the focus.
class SeatKeyboard final : public QObject {
    Q_OBJECT

public:
    /// Borrows `connection`, which outlives the object.
    explicit SeatKeyboard(Connection &connection);
    Q_DISABLE_COPY_MOVE(SeatKeyboard)
    ~SeatKeyboard() override;

    /// The last one told, as XKB writes keymaps; empty before there was a keyboard.
    const QByteArray &keymap() const { return m_keymap; }

Q_SIGNALS:
    void keymapChanged();

private:
    static const wl_seat_listener &seatListener();
    static const wl_keyboard_listener &keyboardListener();
    void follow(bool hasKeyboard);
    void read(std::uint32_t format, int descriptor, std::uint32_t size);

    Connection &m_connection;
    Owned<wl_seat> m_seat;
    Owned<wl_keyboard> m_keyboard; // ends before its seat
    QByteArray m_keymap;
};

} // namespace lumacap::wayland
