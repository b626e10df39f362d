#pragma once

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// Whether the desktop can't be seen, as under a screen locker: windows that no manager looks
/// after, and not ours, lie over every monitor, in front of all others. A few round trips for each
/// window.
bool isScreenLocked(xcb::Connection &connection);

} // namespace lumacap::x11
