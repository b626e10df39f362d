#pragma once

#include "harness/wayland/WaylandDesktop.h"

#include <QDBusConnection>

#include <memory>

namespace lumacap::harness {

/// Whether X11 programs find a server.
enum class XServerInside { Absent, Present };

/// What GNOME counts places on its monitors in.
enum class GnomeUnits {
    Pixels, ///< as it does by itself; scales are whole numbers
    Points, ///< once the person has switched fractional scales on
};

/// How the monitors stand, from left to right.
struct GnomeArrangement {
    std::vector<double> scales;
    GnomeUnits units = GnomeUnits::Points;
    /// By a quarter, all of them.
    bool isTurned = false;
};

/// The make of a GNOME session.
struct GnomeOptions {
    /// Of the monitors, from left to right.
    std::vector<QSize> monitors{{1280, 800}};
    XServerInside xServer = XServerInside::Absent;
};

/// A GNOME Shell on virtual monitors, with PipeWire. What is painted lies in full-screen windows:
/// programs have no layer under all windows there.
class GnomeDesktop final : public WaylandDesktop {
public:
    /// Comes back when the shell is up and shows its empty desktop; throws when it can't be.
    explicit GnomeDesktop(const GnomeOptions &options = {});
    Q_DISABLE_COPY_MOVE(GnomeDesktop)
    ~GnomeDesktop() override;

    std::vector<TestOutput> outputs() override { return m_outputs; }
    Input &input() override;
    /// Only as long as the shell does not check.
    QImage look(const QString &output) override;
    /// Waits until it is seen, but for the pointer.
    void paint(const QString &output, const QImage &picture) override;
    bool listsWindows() const override { return false; }

    /// From now on the shell asks who it is that wants to see the screen or to run scripts in it.
    void checkCallers() { evaluate(QStringLiteral("global.context.unsafe_mode = false")); }
    /// Gives the monitors other scales and places; throws where the shell refuses.
    void arrange(const GnomeArrangement &arrangement);

    /// Starts what acts upon the shortcuts in the person's settings.
    void startShortcuts();
    /// The value of a key in the person's settings, and another one for it, as `gsettings` writes
    /// them.
    QString setting(const QString &schema, const QString &key);
    void changeSetting(const QString &schema, const QString &key, const QString &value);

    /// The bus as the test sees it.
    QDBusConnection &connection() { return m_connection; }
    Process &pipeWire() { return *m_pipeWire; }
    void end() override { m_shell->terminate(); }

private:
    void startPipeWire();
    void startShell(const GnomeOptions &options);
    void findXServer();
    void evaluate(const QString &script);
    Answer askForMonitors(const QString &method, const QStringList &arguments = {});

    std::vector<TestOutput> m_outputs;
    std::unique_ptr<SessionBus> m_systemBus;
    QString m_connectionName;
    QDBusConnection m_connection;
    Process *m_pipeWire = nullptr;
    Process *m_shell = nullptr;
    std::unique_ptr<Input> m_input;
    std::map<QString, Process *> m_painted; // by output; owned by the desktop
};

} // namespace lumacap::harness
