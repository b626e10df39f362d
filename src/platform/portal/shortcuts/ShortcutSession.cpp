#include "platform/portal/shortcuts/ShortcutSession.h"

#include "platform/portal/PortalRequest.h"

#include <QDBusObjectPath>
#include <QPointer>
#include <QRandomGenerator>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::portal {

namespace {

constexpr auto openLimit = 20s; // nobody is asked
constexpr auto bindLimit = 2min; // a person may be

const auto sessionInterface = u"org.freedesktop.portal.Session"_s;

QString pathIn(const QVariant &told)
{
    return told.metaType() == QMetaType::fromType<QDBusObjectPath>()
        ? told.value<QDBusObjectPath>().path()
        : told.toString(); // which is what portals answer, by an old mistake
}

} // namespace

ShortcutSession::ShortcutSession(PortalAddress portal)
    : m_portal(std::move(portal))
    , m_token(u"lumacap_%1"_s.arg(QRandomGenerator::system()->generate64(), 0, 16))
    , m_handle(
          portalPath
          + u"/session/%1/%2"_s.arg(m_portal.bus.baseService().mid(1).replace(u'.', u'_'), m_token))
    , m_owner(m_portal.owner, m_portal.bus, QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&m_owner, &QDBusServiceWatcher::serviceUnregistered, this, &ShortcutSession::lost);
}

ShortcutSession::~ShortcutSession()
{
    // Also where the answer to its opening is still under way.
    if (m_isOpen)
        m_portal.bus.send(
            QDBusMessage::createMethodCall(m_portal.owner, m_handle, sessionInterface, u"Close"_s));
    m_portal.bus.disconnect(m_portal.owner, portalPath, shortcutsInterface, u"Activated"_s, this,
                            SLOT(receiveActivated(QDBusMessage)));
    m_portal.bus.disconnect(m_portal.owner, m_handle, sessionInterface, u"Closed"_s, this,
                            SLOT(receiveClosed()));
}

void ShortcutSession::listen()
{
    m_portal.bus.connect(m_portal.owner, portalPath, shortcutsInterface, u"Activated"_s, this,
                         SLOT(receiveActivated(QDBusMessage)));
    m_portal.bus.connect(m_portal.owner, m_handle, sessionInterface, u"Closed"_s, this,
                         SLOT(receiveClosed()));
}

QCoro::Task<Result<QStringList>> ShortcutSession::bind(QList<BoundShortcut> shortcuts)
{
    registerBoundShortcuts();
    const QPointer self{this};
    m_isOpen = true;
    Question opening{shortcutsInterface, u"CreateSession"_s, {}, {}, openLimit};
    opening.options.insert(u"session_handle_token"_s, m_token);
    const auto opened = co_await PortalRequest::ask(m_portal, std::move(opening), this);
    if (!opened)
        co_return std::unexpected(opened.error());
    if (!self)
        co_return failure(u"nobody waits for it"_s);
    const QString handle = pathIn(opened->value(u"session_handle"_s));
    if (!handle.startsWith(portalPath))
        co_return failure(u"the desktop's portal answered nonsense"_s);
    m_handle = handle;
    listen();
    Question binding{shortcutsInterface, u"BindShortcuts"_s, {}, {}, bindLimit};
    binding.arguments.append(QVariant::fromValue(QDBusObjectPath(m_handle)));
    binding.arguments.append(QVariant::fromValue(shortcuts));
    binding.arguments.append(QString()); // no window of ours asks
    const auto bound = co_await PortalRequest::ask(m_portal, std::move(binding), this);
    if (!bound)
        co_return std::unexpected(bound.error());
    co_return idsIn(bound->value(u"shortcuts"_s));
}

void ShortcutSession::receiveActivated(const QDBusMessage &signal)
{
    const QVariantList arguments = signal.arguments();
    if (m_isOpen && arguments.size() >= 2 && pathIn(arguments.at(0)) == m_handle)
        Q_EMIT activated(arguments.at(1).toString());
}

void ShortcutSession::receiveClosed()
{
    m_isOpen = false;
    Q_EMIT closed();
}

} // namespace lumacap::portal
