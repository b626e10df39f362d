#include "app/X11Backends.h"

#include "app/AbsentServices.h"
#include "app/Session.h"
#include "platform/x11/X11OverlaySurface.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/hotkeys/X11HotkeyService.h"
#include "platform/x11/windows/X11WindowList.h"
#include "platform/xcb/Connection.h"

#include <QGuiApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::x11 {

bool isOffered(const Session &session)
{
    return session.x11() != nullptr;
}

bool showsWindows(const Session &session)
{
    return isOffered(session) && QGuiApplication::platformName() == u"xcb"_s;
}

std::unique_ptr<ScreenCapture> screenCapture(const Session &session)
{
    return std::make_unique<X11ScreenCapture>(*session.x11());
}

std::unique_ptr<Screens> screens(const Session &session)
{
    return std::make_unique<X11Screens>(*session.x11());
}

std::unique_ptr<WindowList> windowList(const Session &session, const ApplicationNames &names)
{
    return std::make_unique<X11WindowList>(*session.x11(), names);
}

std::unique_ptr<OverlaySurface> overlaySurface(const Session &session)
{
    return std::make_unique<X11OverlaySurface>(*session.x11());
}

std::unique_ptr<HotkeyService> hotkeyService(const Session & /*session*/)
{
    auto connection = xcb::Connection::open();
    if (!connection) // the server is going at this moment
        return std::make_unique<AbsentHotkeyService>();
    return std::make_unique<X11HotkeyService>(std::move(*connection));
}

std::unique_ptr<Pasteboard> pasteboard(const Session &session)
{
    return std::make_unique<X11Pasteboard>(*session.x11());
}

} // namespace lumacap::x11
