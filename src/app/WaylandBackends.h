#pragma once

#include "platform/OverlaySurface.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "platform/wayland/PointerFinder.h"

#include <memory>

namespace lumacap {
class Session;
}

/// What Wayland compositors have by protocols that several of them speak.
namespace lumacap::wayland {

bool isOffered(const Session &session);
bool copiesScreens(const Session &session);
bool probesPointer(const Session &session);
bool hasLayerShell(const Session &session);
/// Whether the toolkit shows its windows there.
bool showsWindows(const Session &session);
bool controlsData(const Session &session);
/// Whether a window with the focus fills the clipboard.
bool copiesFromWindows(const Session &session);

std::unique_ptr<ScreenCapture> screencopy(const Session &session);
std::unique_ptr<PointerFinder> probedPointer(const Session &session);
std::unique_ptr<OverlaySurface> layerShellSurface(const Session &session);
std::unique_ptr<OverlaySurface> fullScreenSurface(const Session &session);
std::unique_ptr<Pasteboard> dataControl(const Session &session);
std::unique_ptr<Pasteboard> toolkitPasteboard(const Session &session);

} // namespace lumacap::wayland
