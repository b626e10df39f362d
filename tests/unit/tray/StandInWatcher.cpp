#include "StandInWatcher.h"

#include <stdexcept>
#include <utility>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

StandInWatcher::StandInWatcher(QDBusConnection connection)
    : m_connection(std::move(connection))
{
    if (!m_connection.registerObject(u"/StatusNotifierWatcher"_s, this,
                                     QDBusConnection::ExportScriptableContents))
        throw std::runtime_error("no place for the watcher");
}

void StandInWatcher::appear()
{
    if (!m_connection.registerService(u"org.kde.StatusNotifierWatcher"_s))
        throw std::runtime_error("the watcher's name is taken");
}

void StandInWatcher::vanish()
{
    if (!m_connection.unregisterService(u"org.kde.StatusNotifierWatcher"_s))
        throw std::runtime_error("the watcher has no name to give up");
}

void StandInWatcher::setHost(Host host)
{
    m_host = host;
    if (host == Host::Present)
        Q_EMIT StatusNotifierHostRegistered();
    else
        Q_EMIT StatusNotifierHostUnregistered();
}

void StandInWatcher::RegisterStatusNotifierItem(const QString &service)
{
    m_asked.append(service);
    if (m_manner == Manner::Refuses)
        sendErrorReply(QDBusError::UnknownObject, u"not ready"_s);
    else if (m_manner == Manner::KeepsSilent)
        setDelayedReply(true);
}

} // namespace lumacap::freedesktop
