#pragma once

#include "platform/kwin/hotkeys/Keymap.h"
#include "platform/wayland/SeatKeyboard.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <cstdint>
#include <optional>

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
    void readKeymap();
    QCoro::Task<> learnLayout();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_layouts;
    wayland::SeatKeyboard m_seat;
    std::optional<Keymap> m_keymap;
    std::uint32_t m_layout = 0;
    bool m_isKnown = false;
};

} // namespace lumacap::kwin
