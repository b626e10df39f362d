#include "app/GnomeBackends.h"

#include "app/HotkeyCommands.h"
#include "app/Session.h"
#include "app/WaylandBackends.h"
#include "platform/gnome/CastPointerFinder.h"
#include "platform/gnome/FrameReader.h"
#include "platform/gnome/GnomeHotkeyService.h"
#include "platform/gnome/Module.h"
#include "platform/gnome/MutterScreenCapture.h"
#include "platform/gnome/XwaylandPasteboard.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

bool castsScreens(const Session &session)
{
    return wayland::isOffered(session) && session.hasBusName(u"org.gnome.Mutter.ScreenCast"_s)
        && Module().isLoaded();
}

bool keepsKeybindings(const Session &session)
{
    return wayland::isOffered(session)
        && session.hasBusName(u"org.gnome.SettingsDaemon.MediaKeys"_s)
        && Module().makeKeybindings() != nullptr;
}

bool runsXServer(const Session &session)
{
    // Others' X servers let a program own the clipboard only while a window of theirs has the
    // focus.
    return wayland::isOffered(session) && session.hasBusName(u"org.gnome.Mutter.DisplayConfig"_s)
        && qgetenv("DISPLAY").startsWith(':');
}

std::unique_ptr<ScreenCapture> screenCapture(const Session &session)
{
    return std::make_unique<MutterScreenCapture>(QDBusConnection::sessionBus(), *session.outputs(),
                                                 Module().makeFrameReader());
}

std::unique_ptr<wayland::PointerFinder> pointerFinder(const Session &session)
{
    return std::make_unique<CastPointerFinder>(QDBusConnection::sessionBus(), *session.outputs(),
                                               Module().makeFrameReader());
}

std::unique_ptr<HotkeyService> hotkeyService(const Session & /*session*/)
{
    std::vector<HotkeyCommand> commands;
    commands.reserve(hotkeyCommands.size());
    for (const HotkeyCommandRow &entry : hotkeyCommands)
        commands.push_back({entry.id, row(entry.command).name, u"Lumacap: "_s + entry.title});
    return std::make_unique<GnomeHotkeyService>(
        Module().makeKeybindings(), QCoreApplication::applicationFilePath(), std::move(commands));
}

std::unique_ptr<Pasteboard> pasteboard(const Session & /*session*/)
{
    return std::make_unique<XwaylandPasteboard>();
}

} // namespace lumacap::gnome
