#pragma once

#include <QHash>
#include <QSet>

#include <cstdint>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// The events of other programs' windows that this object has asked the server for, beside those
/// that the connection's other users want of the same windows.
class WindowWatch {
public:
    /// Borrows `connection`, which outlives the object.
    explicit WindowWatch(xcb::Connection &connection);
    Q_DISABLE_COPY_MOVE(WindowWatch)
    ~WindowWatch();

    /// Adds `events` to `present`, the mask that the connection has on the window.
    void add(std::uint32_t window, std::uint32_t present, std::uint32_t events);
    /// Puts the masks of all other windows back as they were found.
    void keepOnly(const QSet<std::uint32_t> &windows);

private:
    xcb::Connection &m_connection;
    QHash<std::uint32_t, std::uint32_t> m_foundMasks;
};

} // namespace lumacap::x11
