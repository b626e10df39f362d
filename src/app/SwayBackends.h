#pragma once

#include "platform/ApplicationNames.h"
#include "platform/HotkeyService.h"
#include "platform/WindowList.h"
#include "platform/wayland/PointerFinder.h"

#include <memory>

namespace lumacap {
class Session;
}

/// What sway has over its own socket.
namespace lumacap::sway {

bool isOffered(const Session &session);

std::unique_ptr<wayland::PointerFinder> pointerFinder(const Session &session);
std::unique_ptr<WindowList> windowList(const Session &session, const ApplicationNames &names);
std::unique_ptr<HotkeyService> hotkeyService(const Session &session);

} // namespace lumacap::sway
