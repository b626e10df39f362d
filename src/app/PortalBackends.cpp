#include "app/PortalBackends.h"

#include "app/HotkeyCommands.h"
#include "app/Session.h"
#include "app/WaylandBackends.h"
#include "platform/freedesktop/ApplicationId.h"
#include "platform/portal/Portal.h"
#include "platform/portal/PortalScreenCapture.h"
#include "platform/portal/shortcuts/PortalHotkeyService.h"

#include <QDBusConnection>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

bool isOffered(const Session &session)
{
    return wayland::isOffered(session) && session.hasBusName(portalName);
}

std::unique_ptr<ScreenCapture> screenCapture(const Session &session)
{
    return std::make_unique<PortalScreenCapture>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal-screenshot"_s),
        freedesktop::applicationId, *session.outputs());
}

QCoro::Task<std::unique_ptr<HotkeyService>> hotkeyService()
{
    ShortcutTexts texts;
    for (const HotkeyCommandRow &entry : hotkeyCommands)
        texts[entry.id] = entry.title;
    auto service = std::make_unique<PortalHotkeyService>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal-shortcuts"_s),
        freedesktop::applicationId, std::move(texts));
    const bool isOffered = co_await service->isOffered();
    co_return isOffered ? std::move(service) : nullptr;
}

} // namespace lumacap::portal
