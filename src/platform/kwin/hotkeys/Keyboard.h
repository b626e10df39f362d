#pragma once

#include "platform/kwin/hotkeys/Keymap.h"
#include "platform/wayland/Owned.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <cstdint>
#include <optional>

struct wl_keyboard;
struct wl_keyboard_listener;
struct wl_seat;
struct wl_seat_listener;

namespace lumacap::wayland {
class Connection;
}

namespace lumacap::kwin {

/// The session's keyboard: its map as the compositor has it, and the layout that is on.
class Keyboard final : public QObject {
    Q_OBJECT

public:
    /// Borrows `connection`, which outlives the object; KWin is on `bus`.
    Keyboard(wayland::Connection &connection, QDBusConnection bus);
    Q_DISABLE_COPY_MOVE(Keyboard)
    ~Keyboard() override;

    /// False until the desktop has told, or has had its time to.
    bool isKnown() const { return m_isKnown; }
    /// As `Keymap::sequences`, in the layout that is on. Empty before the keyboard is known.
    KeySequences sequences(std::uint32_t evdevCode, std::uint32_t carbonModifiers) const;

Q_SIGNALS:
    /// The keyboard is known now, or has another map or layout.
    void changed();

private Q_SLOTS:
    void onLayoutChanged();

private:
    static const wl_seat_listener &seatListener();
    static const wl_keyboard_listener &keyboardListener();
    void follow(bool hasKeyboard);
    void read(std::uint32_t format, int descriptor, std::uint32_t size);
    QCoro::Task<> learnLayout();

    wayland::Connection &m_connection;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_layouts;
    wayland::Owned<wl_seat> m_seat;
    wayland::Owned<wl_keyboard> m_keyboard; // ends before its seat
    std::optional<Keymap> m_keymap;
    std::uint32_t m_layout = 0;
    bool m_isKnown = false;
};

} // namespace lumacap::kwin
