#pragma once

#include "graphics/Geometry.h"
#include "platform/Result.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"

#include <QCoroTask>
#include <QRect>

#include <optional>
#include <vector>

class QScreen;

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

/// The screen that `monitor` is, where `main` is the main monitor.
Screen screenOf(const Monitor &monitor, const Monitor &main);

/// The root pixels of `screen`; nothing when none of the `monitors`, the main one first, is that
/// screen as it was.
std::optional<QRect> frameOf(const Screen &screen, const std::vector<Monitor> &monitors);

/// The toolkit's screen whose first root pixel is `origin`; null where it knows none.
QScreen *toolkitScreenAt(QPoint origin);

/// Device pixels a point on the monitor with this frame: the toolkit's scale of its screen there,
/// as a whole number; 1 where the toolkit runs without screens.
double backingFactorOf(const QRect &frame);

/// The frame of a monitor in global space, whose unit is `factor` root pixels (the main monitor's)
/// and whose origin is the main monitor's lower left corner.
Rect<Global> globalFrame(const QRect &frame, const QRect &main, double factor);

/// The middle of a root pixel in the same space: never on an edge, so that it lies in the frame of
/// the monitor that shows the pixel, whichever of its edges the pixel touches.
Point<Global> globalPoint(QPoint pixel, const QRect &main, double factor);

} // namespace lumacap::x11
