#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

#include <mutex>

namespace lumacap::harness {

/// The bus object of a tray: items register with it. Lives in a thread of its own, so that it
/// answers while a test waits for something else.
class TrayWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    /// The registered items as "bus name/object path", in order of registration. From any thread.
    QStringList items() const;
    /// Takes the watcher's place on `bus`, in the thread that calls; false when it is taken.
    bool appear(QDBusConnection bus);
    /// Drops the item of a client that has left the bus.
    void forget(const QString &busName);

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): the names are the protocol's.
    void RegisterStatusNotifierItem(const QString &service);
    void RegisterStatusNotifierHost(const QString &service);

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &item);
    void StatusNotifierItemUnregistered(const QString &item);
    void StatusNotifierHostRegistered();
    // NOLINTEND(readability-identifier-naming)

private:
    static bool isHostRegistered() { return true; }
    static int protocolVersion() { return 0; }

    mutable std::mutex m_mutex;
    QStringList m_items;
};

} // namespace lumacap::harness
