#pragma once

#include "graphics/Geometry.h"
#include "platform/Result.h"
#include "platform/ScreenCapture.h"

#include <QCoroTask>
#include <QRect>

#include <vector>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// A monitor of the X screen.
struct Monitor {
    /// The atom of its name, which stays while the monitor does; 0 for the one of a server without
    /// monitors.
    DisplayId id{};
    /// Root pixels, y down.
    QRect frame;

    friend bool operator==(const Monitor &, const Monitor &) = default;
};

/// The server's monitors, the primary one first, then in its order. A server that knows no monitors
/// has one: the whole root window.
QCoro::Task<Result<std::vector<Monitor>>> queryMonitors(xcb::Connection &connection);

/// The same, waiting for the server's answer: one round trip.
std::vector<Monitor> currentMonitors(xcb::Connection &connection);

/// Device pixels a point on the monitor with this frame: the toolkit's scale of its screen there,
/// as a whole number; 1 where the toolkit runs without screens.
double backingFactorOf(const QRect &frame);

/// The frame of a monitor in global space, whose unit is `factor` root pixels (the main monitor's)
/// and whose origin is the main monitor's lower left corner.
Rect<Global> globalFrame(const QRect &frame, const QRect &main, double factor);

} // namespace lumacap::x11
