#include "harness/TrayWatcher.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>

namespace lumacap::harness {

QStringList TrayWatcher::items() const
{
    const std::scoped_lock lock(m_mutex);
    return m_items;
}

bool TrayWatcher::appear(QDBusConnection bus)
{
    auto *const leaving = new QDBusServiceWatcher(
        QStringLiteral("*"), bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(leaving, &QDBusServiceWatcher::serviceUnregistered, this, &TrayWatcher::forget);
    if (!bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                            QDBusConnection::ExportAllContents)
        || !bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher")))
        return false;
    Q_EMIT StatusNotifierHostRegistered();
    return true;
}

void TrayWatcher::forget(const QString &busName)
{
    const QString prefix = busName + u'/';
    QStringList gone;
    {
        const std::scoped_lock lock(m_mutex);
        for (const QString &item : std::as_const(m_items)) {
            if (item.startsWith(prefix))
                gone.append(item);
        }
        m_items.removeIf([&prefix](const QString &item) { return item.startsWith(prefix); });
    }
    for (const QString &item : gone)
        Q_EMIT StatusNotifierItemUnregistered(item);
}

void TrayWatcher::RegisterStatusNotifierItem(const QString &service)
{
    // An item gives its bus name, or the path of its object.
    const QString path = service.startsWith(u'/') ? service : QStringLiteral("/StatusNotifierItem");
    const QString item = message().service() + path;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_items.contains(item))
            return;
        m_items.append(item);
    }
    Q_EMIT StatusNotifierItemRegistered(item);
}

void TrayWatcher::RegisterStatusNotifierHost(const QString & /*service*/)
{
    Q_EMIT StatusNotifierHostRegistered();
}

} // namespace lumacap::harness
