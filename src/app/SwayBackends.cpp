#include "app/SwayBackends.h"

#include "app/Session.h"
#include "app/WaylandBackends.h"
#include "platform/wlroots/sway/Ipc.h"
#include "platform/wlroots/sway/SwayPointerFinder.h"
#include "platform/wlroots/sway/SwayWindowList.h"
#include "platform/wlroots/sway/hotkeys/SwayHotkeyService.h"

namespace lumacap::sway {

bool isOffered(const Session &session)
{
    return session.hasSway();
}

std::unique_ptr<wayland::PointerFinder> pointerFinder(const Session &session)
{
    return std::make_unique<SwayPointerFinder>(
        Ipc::path(), wayland::probesPointer(session) ? wayland::probedPointer(session) : nullptr);
}

std::unique_ptr<WindowList> windowList(const Session &session, const ApplicationNames &names)
{
    return std::make_unique<SwayWindowList>(*session.outputs(), names);
}

std::unique_ptr<HotkeyService> hotkeyService(const Session &session)
{
    return std::make_unique<SwayHotkeyService>(
        std::make_unique<wayland::SeatKeyboard>(*session.wayland()));
}

} // namespace lumacap::sway
