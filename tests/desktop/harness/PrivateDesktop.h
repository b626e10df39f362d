#pragma once

#include "harness/SessionBus.h"
#include "harness/XServer.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <vector>

namespace lumacap::harness {

/// Who manages windows.
enum class WindowManager { Nobody, Openbox, Xfwm4 };

/// The make of a desktop.
struct DesktopOptions {
    ServerOptions server{};
    WindowManager windowManager = WindowManager::Openbox;
};

/// Everything a desktop program needs, of one test's own: folders, a session bus, an X server, a
/// window manager. Any number can run at once. All of it is gone when the object is.
class PrivateDesktop {
public:
    /// Comes back when the desktop is up; throws when it can't be.
    explicit PrivateDesktop(const DesktopOptions &options = {});
    Q_DISABLE_COPY_MOVE(PrivateDesktop)
    ~PrivateDesktop();

    /// What a program of this desktop gets; tests may add to a copy.
    const Environment &environment() const { return m_environment; }
    /// Changes the environment of programs started from now on.
    void set(const QByteArray &variable, const QByteArray &value)
    {
        m_environment[variable] = value;
    }
    /// An existing folder of this desktop, made where it is missing: "home", "config", "run",
    /// "pictures".
    QString folder(const QString &name) const;
    /// A path for the output of a process, different at each call.
    QString newLog(const QString &name);

    /// Starts `command` in this desktop; it ends with the desktop, or with `stop`.
    Process &start(const QString &name, const QStringList &command);
    /// Ends a process started here and forgets it.
    void stop(const Process &process);
    /// Runs `command` in this desktop to its end.
    Answer ask(const QStringList &command, std::chrono::milliseconds limit = usualAnswer);

    XServer &server() { return *m_server; }
    SessionBus &bus() { return *m_bus; }
    /// Who owns the X selection `name`, as a window id; 0 when nobody does.
    std::uint32_t selectionOwner(const char *name) const;

private:
    static constexpr std::chrono::seconds usualAnswer{30};
    void startWindowManager(WindowManager windowManager);

    QTemporaryDir m_root;
    Environment m_environment;
    int m_logs = 0;
    std::unique_ptr<SessionBus> m_bus;
    std::unique_ptr<XServer> m_server;
    std::vector<std::unique_ptr<Process>> m_processes;
};

} // namespace lumacap::harness
