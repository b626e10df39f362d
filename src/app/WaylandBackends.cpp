#include "app/WaylandBackends.h"

#include "app/Session.h"
#include "platform/wayland/ProbePointerFinder.h"
#include "platform/wayland/WaylandScreens.h"
#include "platform/wayland/clipboard/DataControlPasteboard.h"
#include "platform/wayland/clipboard/ToolkitPasteboard.h"
#include "platform/wayland/overlay/FullScreenOverlaySurface.h"
#include "platform/wayland/overlay/LayerShellOverlaySurface.h"
#include "platform/wlroots/ScreencopyScreenCapture.h"

namespace lumacap::wayland {

bool isOffered(const Session &session)
{
    return session.wayland() != nullptr;
}

bool copiesScreens(const Session &session)
{
    return isOffered(session) && wlroots::ScreencopyScreenCapture::isOffered(*session.wayland());
}

bool probesPointer(const Session &session)
{
    return isOffered(session) && ProbePointerFinder::isOffered(*session.wayland());
}

bool hasLayerShell(const Session &session)
{
    return isOffered(session) && LayerShellOverlaySurface::isOffered(*session.wayland());
}

bool showsWindows(const Session &session)
{
    return isOffered(session) && FullScreenOverlaySurface::isOffered();
}

bool controlsData(const Session &session)
{
    return isOffered(session) && DataControlPasteboard::isOffered(*session.wayland());
}

bool copiesFromWindows(const Session &session)
{
    return isOffered(session) && ToolkitPasteboard::isOffered(*session.wayland());
}

std::unique_ptr<ScreenCapture> screencopy(const Session &session)
{
    return std::make_unique<wlroots::ScreencopyScreenCapture>(*session.wayland(),
                                                              *session.outputs());
}

std::unique_ptr<PointerFinder> probedPointer(const Session &session)
{
    return std::make_unique<ProbePointerFinder>(*session.wayland(), *session.outputs());
}

std::unique_ptr<OverlaySurface> layerShellSurface(const Session &session)
{
    return std::make_unique<LayerShellOverlaySurface>(*session.outputs());
}

std::unique_ptr<OverlaySurface> fullScreenSurface(const Session &session)
{
    return std::make_unique<FullScreenOverlaySurface>(*session.outputs());
}

std::unique_ptr<Pasteboard> dataControl(const Session &session)
{
    return std::make_unique<DataControlPasteboard>(*session.wayland());
}

std::unique_ptr<Pasteboard> toolkitPasteboard(const Session & /*session*/)
{
    return std::make_unique<ToolkitPasteboard>();
}

} // namespace lumacap::wayland
