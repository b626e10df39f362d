#pragma once

#include "harness/XConnection.h"

#include <QRect>

#include <vector>

namespace lumacap::harness {

/// The windows on the screen that no window manager looks after: menus, tips, and whatever a test
/// shows in that way. In root pixels, the lowest first.
std::vector<QRect> popUps(const XConnection &connection);

} // namespace lumacap::harness
