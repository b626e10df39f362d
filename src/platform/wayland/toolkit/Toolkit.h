#pragma once

#include "platform/wayland/Output.h"

class QScreen;
class QWindow;
struct wl_display;
struct wl_output;
struct wl_surface;

/// What is the compositor's behind the toolkit's own objects, in a process whose toolkit shows its
/// windows on the same compositor. All are the toolkit's.
namespace lumacap::wayland::toolkit {

/// Its connection, whose events it serves itself.
wl_display *display();
/// Null where the window has none at the moment.
wl_surface *surfaceOf(QWindow &window);
wl_output *outputOf(QScreen &screen);

/// What it calls `output`; null while it doesn't know it yet.
QScreen *screenOf(const Output &output);

} // namespace lumacap::wayland::toolkit
