#pragma once

#include <QObject>

namespace lumacap {

class Session;

/// While one exists, the end of the display server is a good end of the process, at once and with
/// status 0. Nothing is lost by it: files are written whole within one turn of the loop, and the
/// clipboard ended with the server. At most one exists at a time.
class EndOfDisplay {
public:
    /// Borrows `session` for the call.
    explicit EndOfDisplay(const Session &session);
    ~EndOfDisplay();
    Q_DISABLE_COPY_MOVE(EndOfDisplay)

private:
    QObject m_context;
};

} // namespace lumacap
