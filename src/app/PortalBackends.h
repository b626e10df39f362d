#pragma once

#include "platform/HotkeyService.h"
#include "platform/ScreenCapture.h"

#include <QCoroTask>

#include <memory>

namespace lumacap {
class Session;
}

/// What the portals of a Wayland session have.
namespace lumacap::portal {

bool isOffered(const Session &session);

std::unique_ptr<ScreenCapture> screenCapture(const Session &session);
/// Null where the portal has none, which its desktop decides and only it can tell.
QCoro::Task<std::unique_ptr<HotkeyService>> hotkeyService();

} // namespace lumacap::portal
