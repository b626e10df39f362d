#pragma once

#include "harness/Environment.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <iosfwd>
#include <optional>

#include <sys/types.h>

namespace lumacap::harness {

/// How a process ended: by itself with `code`, or by `signal` (0 when by itself).
struct Ending {
    int code = 0;
    int signal = 0;
    friend bool operator==(const Ending &, const Ending &) = default;
};

/// Prints an ending in a failed expectation.
std::ostream &operator<<(std::ostream &stream, const Ending &ending);

/// A child process in a group of its own. It and its group are gone when the object is, and also
/// when the test dies. Only the main thread may start one: the kernel ends it with the thread that
/// did.
class Process {
public:
    /// Runs `command` (program first, found along PATH) with exactly `environment`; its output goes
    /// to `log`.out and `log`.err. A program that can't be started ends with code 127.
    Process(const QStringList &command, const Environment &environment, const QString &log);
    Q_DISABLE_COPY_MOVE(Process)
    ~Process();

    /// The process id, valid until the object is gone even if the process has ended.
    pid_t pid() const { return m_pid; }
    /// How it ended, empty while it runs.
    std::optional<Ending> ending() const;
    /// Waits for the end; empty when `limit` passes first.
    std::optional<Ending> waitForEnd(std::chrono::milliseconds limit) const;
    /// Sends `signal` to the process alone.
    void send(int signal) const;
    /// Sends SIGTERM, after `limit` SIGKILL to the whole group, and says how the process ended.
    Ending terminate(std::chrono::milliseconds limit = std::chrono::seconds(5)) const;
    /// Standard output so far.
    QByteArray output() const;
    /// Standard error so far.
    QByteArray errors() const;

private:
    pid_t m_pid = -1;
    QString m_log;
};

/// What a short-lived program said and how it ended.
struct Answer {
    Ending ending;
    QByteArray output;
    QByteArray errors;
};

/// Runs `command` to its end; throws when `limit` passes first.
Answer run(const QStringList &command, const Environment &environment, const QString &log,
           std::chrono::milliseconds limit = std::chrono::seconds(30));

} // namespace lumacap::harness
