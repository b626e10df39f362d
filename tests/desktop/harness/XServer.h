#pragma once

#include "harness/Process.h"

#include <QRect>
#include <QSize>
#include <QString>

#include <memory>
#include <vector>

namespace lumacap::harness {

/// Which monitor is the desktop's main one.
enum class Role { Ordinary, Primary };

/// One monitor as RandR tells of it; `area` in root pixels.
struct Monitor {
    QString name;
    QRect area;
    Role role = Role::Ordinary;
};

/// What kind of X server.
enum class ServerKind {
    /// One framebuffer whose monitors are names for parts of it.
    Virtual,
    /// The ordinary server on a driver without hardware: outputs DUMMY0, DUMMY1, … that can be
    /// switched.
    RealOutputs,
};

/// The make of an X server.
struct ServerOptions {
    ServerKind kind = ServerKind::Virtual;
    QSize size{1280, 800};
    int depth = 24;
    /// In RandR's order; none leaves the server's own single one.
    std::vector<Monitor> monitors{};
    /// Passed to the server, such as {"-extension", "RANDR"}.
    QStringList arguments{};
};

/// An X server of one test.
class XServer {
public:
    /// Starts it and lays out the monitors; throws when that fails. `folder` takes configuration
    /// and log.
    XServer(const ServerOptions &options, const QString &folder, const Environment &environment);
    Q_DISABLE_COPY_MOVE(XServer)
    /// Ends the server in its orderly way, so that its lock and socket in /tmp go with it.
    ~XServer() { end(); }

    /// What DISPLAY holds for its clients.
    QByteArray display() const { return m_display; }
    /// Runs xrandr with `arguments`; throws when it fails.
    void randr(const QStringList &arguments) const;
    /// Switches the output `name` off, whatever xrandr thinks of a desktop without any.
    void switchOff(const QString &name) const;
    /// Ends the server under its clients.
    void end() const { m_server->terminate(); }

private:
    QStringList virtualServer(const ServerOptions &options) const;
    QStringList serverWithOutputs() const;
    void layOutVirtual(const std::vector<Monitor> &monitors) const;
    void layOutOutputs(const std::vector<Monitor> &monitors) const;

    QString m_folder;
    Environment m_environment;
    std::unique_ptr<Process> m_server;
    QByteArray m_display;
};

} // namespace lumacap::harness
