#pragma once

#include "platform/ApplicationNames.h"
#include "platform/HotkeyService.h"
#include "platform/ScreenCapture.h"
#include "platform/WindowList.h"
#include "platform/wayland/PointerFinder.h"

#include <memory>

namespace lumacap {
class Session;
}

/// What KDE Plasma has in a Wayland session.
namespace lumacap::kwin {

bool isOffered(const Session &session);
/// Only while it can take pictures has it the name.
bool takesPictures(const Session &session);
bool givesShortcuts(const Session &session);

std::unique_ptr<ScreenCapture> screenCapture(const Session &session);
std::unique_ptr<wayland::PointerFinder> pointerFinder(const Session &session);
std::unique_ptr<WindowList> windowList(const Session &session, const ApplicationNames &names);
std::unique_ptr<HotkeyService> hotkeyService(const Session &session);

} // namespace lumacap::kwin
