#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

namespace lumacap::freedesktop {

/// How a stand-in answers a registration.
enum class Manner { Accepts, Refuses, KeepsSilent };
/// Whether somebody shows what is registered.
enum class Host { Present, Absent };

/// A StatusNotifierWatcher on a connection of its own, which appears and vanishes as it is told.
class StandInWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    explicit StandInWatcher(QDBusConnection connection);

    void appear();
    void vanish();
    void setManner(Manner manner) { m_manner = manner; }
    /// A host joins or leaves, and everybody is told.
    void setHost(Host host);
    bool hasHost() const { return m_host == Host::Present; }

    /// What was asked to be registered, refused ones included, oldest first.
    const QStringList &asked() const { return m_asked; }

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &service);

Q_SIGNALS:
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private:
    QDBusConnection m_connection;
    QStringList m_asked;
    Manner m_manner = Manner::Accepts;
    Host m_host = Host::Present;
};

} // namespace lumacap::freedesktop
