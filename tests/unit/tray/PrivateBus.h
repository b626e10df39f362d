#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <vector>

namespace lumacap::freedesktop {

/// Lets the event loop turn until `condition` holds; false when it does not within five seconds.
bool eventually(const std::function<bool()> &condition);

/// A bus of the test's own, served by a dbus-daemon in a folder of its own.
class PrivateBus {
public:
    PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)
    ~PrivateBus();

    /// A further participant. Connections end with the bus.
    QDBusConnection connection();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QStringList m_names;
};

/// Calls a method from one connection at another and waits for the answer with the event loop
/// turning, as both ends live in this process.
QDBusMessage call(const QDBusConnection &from, const QDBusMessage &message);

/// The signals that arrived for a connection, oldest first.
class SignalLog : public QObject {
    Q_OBJECT

public:
    SignalLog(QDBusConnection connection, const QString &sender, const QString &path,
              const QString &interface, const QString &name);

    const std::vector<QDBusMessage> &messages() const { return m_messages; }

private Q_SLOTS:
    void record(const QDBusMessage &message);

private:
    std::vector<QDBusMessage> m_messages;
};

} // namespace lumacap::freedesktop
