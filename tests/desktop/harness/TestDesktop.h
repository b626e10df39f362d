#pragma once

#include "harness/SessionBus.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QSize>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <vector>

namespace lumacap::harness {

class Input;

/// One output of a desktop, as the person sees it.
struct TestOutput {
    QString name;
    /// Native pixels.
    QSize pixels;
    /// The desktop's own units, y down.
    QRect frame;

    friend bool operator==(const TestOutput &, const TestOutput &) = default;
};

/// A white window of another program's, without a frame of the desktop's.
struct WindowLook {
    QString appId = QStringLiteral("org.example.Window");
    QString title = QStringLiteral("A window");
    QSize size{300, 200}; ///< the desktop's own units
};

/// A desktop of one test's own, with everything that a program needs of one: folders, a session
/// bus, a display server. Any number can run at once. All of it is gone when the object is.
class TestDesktop {
public:
    Q_DISABLE_COPY_MOVE(TestDesktop)
    virtual ~TestDesktop();

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

    SessionBus &bus() { return *m_bus; }

    /// The outputs, the main one first.
    virtual std::vector<TestOutput> outputs() = 0;
    /// The hands of whoever sits before it.
    virtual Input &input() = 0;
    /// What the output of this name shows now, in native pixels, through another program's eyes.
    virtual QImage look(const QString &output) = 0;
    /// Has the output of this name show `picture`, of its size in pixels, under all windows.
    virtual void paint(const QString &output, const QImage &picture) = 0;

    /// Ends who shows the windows, under its clients.
    virtual void end() = 0;

    /// Whether the desktop tells programs of others' windows.
    virtual bool listsWindows() const { return true; }
    /// Shows a window, wherever the desktop puts it, until the desktop ends.
    virtual void openWindow(const WindowLook &look) = 0;

    /// The types the clipboard offers; empty when nobody has put anything on it.
    virtual QList<QByteArray> clipboardTypes() = 0;
    /// The clipboard as `type`; empty when its owner does not give it within `limit`.
    virtual QByteArray clipboardBytes(const char *type,
                                      std::chrono::milliseconds limit = usualAnswer) = 0;

protected:
    /// Makes folders and the bus, which may start the installed `services`. Throws when it can't.
    explicit TestDesktop(const QStringList &services);
    /// Ends what was started, newest first; for destructors, whose servers would go before.
    void stopAll();

private:
    static constexpr std::chrono::seconds usualAnswer{30};

    QTemporaryDir m_root;
    Environment m_environment;
    int m_logs = 0;
    std::unique_ptr<SessionBus> m_bus;
    std::vector<std::unique_ptr<Process>> m_processes;
};

} // namespace lumacap::harness
