#pragma once

#include <QtGlobal>

namespace lumacap {

class Session;

/// While one exists, the end of the X server is a good end of the process, with status 0. Left
/// alone the toolkit calls exit(1) from the middle of its event loop, and static objects go while
/// others still use them.
class EndOfDisplay {
public:
    /// Borrows `session`, which outlives the object. At most one exists at a time.
    explicit EndOfDisplay(const Session &session);
    ~EndOfDisplay();
    Q_DISABLE_COPY_MOVE(EndOfDisplay)
};

} // namespace lumacap
