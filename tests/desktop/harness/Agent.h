#pragma once

#include "harness/TestDesktop.h"

#include <QDBusConnection>

namespace lumacap::harness {

/// The program's resident process, driven from outside.
class Agent {
public:
    /// Starts the program in `desktop`, with `wrapper` in front of it (a command that runs the rest
    /// of its arguments in place). Does not wait.
    explicit Agent(TestDesktop &desktop, const QStringList &arguments = {},
                   const QStringList &wrapper = {});
    Q_DISABLE_COPY_MOVE(Agent)
    /// Ends it; the test fails where it has aborted.
    ~Agent();

    /// Waits until the process owns the program's bus name and answers; throws when it does not.
    void requireReady();
    /// Asks for an action ("full-screen", "quit") over the bus; whether the agent took the request.
    bool activate(const QString &action);
    /// Sends the request and wants no answer.
    void activateSoon(const QString &action);
    /// D-Bus activation without a command; whether it was answered.
    bool activatePlainly();

    Process &process() { return *m_process; }
    /// The bus as the test sees it.
    QDBusConnection &bus() { return m_bus; }

private:
    TestDesktop &m_desktop;
    QString m_connectionName;
    QDBusConnection m_bus;
    Process *m_process;
};

/// The command line of the program with `arguments`.
QStringList program(const QStringList &arguments = {});

} // namespace lumacap::harness
