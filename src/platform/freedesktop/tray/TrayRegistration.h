#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <cstddef>

namespace lumacap::freedesktop {

/// Where the item stands with the desktop.
enum class TrayPlace {
    Unknown, ///< The desktop has not answered yet.
    Hosted, ///< A tray host was told of the item and shows it.
    Homeless, ///< No StatusNotifierItem host is there.
};

/// Keeps the connection's item told to whichever org.kde.StatusNotifierWatcher there is, for as
/// long as it lives: one that starts later, one that restarts, one that takes another's place.
/// Nothing waits, and at rest nothing wakes up.
class TrayRegistration : public QObject {
    Q_OBJECT

public:
    /// Without a bus behind `connection` the item is homeless for good. The item is at
    /// /StatusNotifierItem of the connection, where it must have been put before.
    explicit TrayRegistration(QDBusConnection connection);

    TrayPlace place() const { return m_place; }

Q_SIGNALS:
    void placeChanged();

private Q_SLOTS:
    void onHostsChanged();

private:
    QCoro::Task<> findWatcher();
    void follow(const QString &watcher);
    void enlist();
    QCoro::Task<> registerItem();
    QCoro::Task<> findHost();
    void retryLater();
    void settle(TrayPlace place);

    QDBusConnection m_connection;
    QDBusServiceWatcher m_owners;
    QString m_watcher; ///< The unique name of the watcher's owner; empty while there is none.
    QTimer m_retry;
    std::size_t m_retries = 0;
    bool m_isRegistered = false;
    TrayPlace m_place = TrayPlace::Unknown;
};

} // namespace lumacap::freedesktop
