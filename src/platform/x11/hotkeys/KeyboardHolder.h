#pragma once

#include <QCoroTask>
#include <QObject>

#include <cstdint>
#include <functional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// Tells when another client of the server, such as an open menu, takes all keys for itself, and
/// when it lets go. A window of our own toolkit is another client, too.
///
/// No event tells of that, but the window that has the focus is told that it has no keys for a
/// while. So this follows the focus and is told along with each such window. It wakes up at changes
/// of the focus, and never for a key.
class KeyboardHolder final : public QObject {
public:
    /// By a connection that outlives the object and selects no events of windows anywhere else.
    /// `onChanged` is called after each change.
    KeyboardHolder(xcb::Connection &connection, std::function<void()> onChanged);
    Q_DISABLE_COPY_MOVE(KeyboardHolder)
    ~KeyboardHolder() override;

    /// Whether another client holds the keyboard, as far as is known.
    bool isAnother() const { return m_isAnother; }

private:
    void receive(const void *event);
    void look();
    QCoro::Task<> lookUntilSettled();
    void follow(std::uint32_t window);

    xcb::Connection &m_connection;
    std::function<void()> m_onChanged;
    std::uint32_t m_neverShown = 0;
    std::uint32_t m_followed = 0;
    bool m_isAnother = false;
    bool m_isLooking = false;
    bool m_hasChanged = false; // while it looked
};

} // namespace lumacap::x11
