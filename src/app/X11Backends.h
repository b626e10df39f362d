#pragma once

#include "platform/ApplicationNames.h"
#include "platform/HotkeyService.h"
#include "platform/OverlaySurface.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "platform/WindowList.h"

#include <memory>

namespace lumacap {
class Session;
}

/// What an X session has.
namespace lumacap::x11 {

bool isOffered(const Session &session);
/// Also where the toolkit shows its windows: its backend may have been chosen by hand.
bool showsWindows(const Session &session);

std::unique_ptr<ScreenCapture> screenCapture(const Session &session);
std::unique_ptr<Screens> screens(const Session &session);
std::unique_ptr<WindowList> windowList(const Session &session, const ApplicationNames &names);
std::unique_ptr<OverlaySurface> overlaySurface(const Session &session);
std::unique_ptr<HotkeyService> hotkeyService(const Session &session);
std::unique_ptr<Pasteboard> pasteboard(const Session &session);

} // namespace lumacap::x11
