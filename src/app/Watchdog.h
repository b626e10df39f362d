#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <chrono>

namespace lumacap {

/// Ends the process when it is still at the same step after a time limit: for steps inside
/// libraries that wait for another process without one, such as opening a connection. At most one
/// exists at a time.
class Watchdog {
public:
    /// When the limit is over: `lastWords`, a line or nothing, on standard error, and the end with
    /// `status`.
    Watchdog(std::chrono::seconds limit, const QByteArray &lastWords, int status);
    /// The step is done; nothing will happen.
    ~Watchdog();
    Q_DISABLE_COPY_MOVE(Watchdog)
};

} // namespace lumacap
