#pragma once

#include "platform/Screens.h"

#include <QObject>

#include <functional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// Looks after one screen for as long as it lives.
class MonitorWatch final : public QObject {
public:
    /// Calls `changed`, once, when no monitor is `screen` any more: unplugged, resized or moved.
    /// What changes once the object is made is noticed, on a server that tells of such things.
    /// Borrows `connection`, which outlives the object.
    MonitorWatch(xcb::Connection &connection, const Screen &screen, std::function<void()> changed);
    Q_DISABLE_COPY_MOVE(MonitorWatch)
    ~MonitorWatch() override;

private:
    void look(const void *event);

    xcb::Connection &m_connection;
    Screen m_screen;
    std::function<void()> m_changed;
};

} // namespace lumacap::x11
