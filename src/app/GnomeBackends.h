#pragma once

#include "platform/HotkeyService.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "platform/wayland/PointerFinder.h"

#include <memory>

namespace lumacap {
class Session;
}

/// What GNOME has in a Wayland session.
namespace lumacap::gnome {

bool castsScreens(const Session &session);
bool keepsKeybindings(const Session &session);
/// Whether the Wayland session has an X server in it, running or not.
bool runsXServer(const Session &session);

std::unique_ptr<ScreenCapture> screenCapture(const Session &session);
std::unique_ptr<wayland::PointerFinder> pointerFinder(const Session &session);
std::unique_ptr<HotkeyService> hotkeyService(const Session &session);
std::unique_ptr<Pasteboard> pasteboard(const Session &session);

} // namespace lumacap::gnome
