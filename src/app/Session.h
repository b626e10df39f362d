#pragma once

#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>

namespace lumacap {

namespace xcb {
class Connection;
}
namespace kwin {
class OutputOrder;
}
namespace wayland {
class Connection;
class Outputs;
} // namespace wayland

/// What the session that the process runs in offers, found out once.
class Session {
public:
    /// True when a display server answers, so that a toolkit can show windows.
    static bool hasDisplay();
    /// Tells the toolkit, before its application object is made, to show its windows where the
    /// session's other services look for them.
    static void prepareToolkit();

    /// Opens the connection to the session's display server. An application object exists.
    static Session open();
    ~Session();
    Session(Session &&) noexcept;
    Session &operator=(Session &&) noexcept = delete;
    Q_DISABLE_COPY(Session)

    /// False when the display server, if there is one, did not answer.
    bool isConnected() const { return m_x11 != nullptr || m_wayland != nullptr; }
    /// Null in a session without an X server, and under Wayland, where the X server shows only a
    /// part of what is on the screen.
    xcb::Connection *x11() const { return m_x11.get(); }
    /// Both null in a session without a Wayland compositor.
    wayland::Connection *wayland() const { return m_wayland.get(); }
    wayland::Outputs *outputs() const { return m_outputs.get(); }
    /// Whether the compositor speaks sway's language over a socket of its own.
    bool hasSway() const { return m_hasSway; }
    /// Whether somebody on the session bus answers to `name`, or is started when asked. Always
    /// false in an X session, which needs nobody there.
    bool hasBusName(const QString &name) const { return m_busNames.contains(name); }
    /// Calls `ended` when the display server goes, as long as `context` lives.
    void onDisplayEnded(const QObject *context, const std::function<void()> &ended) const;

private:
    Session();

    std::unique_ptr<xcb::Connection> m_x11;
    std::unique_ptr<wayland::Connection> m_wayland;
    std::unique_ptr<wayland::Outputs> m_outputs;
    std::unique_ptr<kwin::OutputOrder> m_outputOrder;
    QSet<QString> m_busNames;
    bool m_hasSway = false;
};

} // namespace lumacap
