#include "app/KWinBackends.h"

#include "app/HotkeyCommands.h"
#include "app/Session.h"
#include "app/WaylandBackends.h"
#include "platform/kwin/capture/KWinScreenCapture.h"
#include "platform/kwin/capture/Screenshot.h"
#include "platform/kwin/hotkeys/KWinHotkeyService.h"
#include "platform/kwin/pointer/KWinPointerFinder.h"
#include "platform/kwin/windows/KWinWindowList.h"

#include <QDBusConnection>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

bool isOffered(const Session &session)
{
    return wayland::isOffered(session) && session.hasBusName(u"org.kde.KWin"_s);
}

bool takesPictures(const Session &session)
{
    return wayland::isOffered(session) && session.hasBusName(screenshotService);
}

bool givesShortcuts(const Session &session)
{
    return isOffered(session) && session.hasBusName(u"org.kde.kglobalaccel"_s);
}

std::unique_ptr<ScreenCapture> screenCapture(const Session &session)
{
    return std::make_unique<KWinScreenCapture>(*session.outputs(), QDBusConnection::sessionBus());
}

std::unique_ptr<wayland::PointerFinder> pointerFinder(const Session & /*session*/)
{
    return std::make_unique<KWinPointerFinder>(QDBusConnection::sessionBus());
}

std::unique_ptr<WindowList> windowList(const Session &session, const ApplicationNames &names)
{
    return std::make_unique<KWinWindowList>(*session.outputs(), names,
                                            QDBusConnection::sessionBus());
}

std::unique_ptr<HotkeyService> hotkeyService(const Session &session)
{
    KWinHotkeyService::Actions actions;
    for (const HotkeyCommandRow &entry : hotkeyCommands)
        actions.insert({entry.id, {row(entry.command).name, entry.title}});
    return std::make_unique<KWinHotkeyService>(*session.wayland(), QDBusConnection::sessionBus(),
                                               std::move(actions));
}

} // namespace lumacap::kwin
