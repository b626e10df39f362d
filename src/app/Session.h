#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace lumacap {

namespace xcb {
class Connection;
}

/// What the session that the process runs in offers, found out once.
class Session {
public:
    /// True when a display server answers, so that a toolkit can show windows.
    static bool hasDisplay();

    /// Opens the connection to the session's display server. An application object exists.
    static Session open();
    ~Session();
    Session(Session &&) noexcept;
    Session &operator=(Session &&) noexcept = delete;
    Q_DISABLE_COPY(Session)

    /// Null in a session without an X server, and under Wayland, where the X server shows only a
    /// part of what is on the screen.
    xcb::Connection *x11() const { return m_x11.get(); }
    /// Calls `ended` when the display server goes, as long as `context` lives.
    void onDisplayEnded(const QObject *context, const std::function<void()> &ended) const;

private:
    Session();

    std::unique_ptr<xcb::Connection> m_x11;
};

} // namespace lumacap
