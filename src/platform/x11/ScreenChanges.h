#pragma once

#include <QCoroTask>

#include <cstdint>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// Sees what is drawn on the screen, by windows and by a compositor, for as long as it lives.
class ScreenChanges {
public:
    /// Borrows `connection`, which outlives the object.
    explicit ScreenChanges(xcb::Connection &connection);
    ~ScreenChanges();
    Q_DISABLE_COPY_MOVE(ScreenChanges)

    /// True when something was drawn since the last call or, on the first, always. False where the
    /// server does not tell.
    QCoro::Task<bool> any();

private:
    xcb::Connection &m_connection;
    bool m_isTold = false;
    std::uint32_t m_damage = 0;
    std::uint32_t m_drawn = 0;
};

} // namespace lumacap::x11
