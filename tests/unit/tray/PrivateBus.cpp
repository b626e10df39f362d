#include "PrivateBus.h"

#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <stdexcept>

#include <sys/prctl.h>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int limit = 5000; // milliseconds

constexpr auto configuration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>
)"_L1;

} // namespace

bool eventually(const std::function<bool()> &condition)
{
    QEventLoop loop;
    QTimer look;
    QTimer end;
    QObject::connect(&look, &QTimer::timeout, &loop, [&loop, &condition] {
        if (condition())
            loop.quit();
    });
    QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
    look.start(1ms);
    end.start(limit);
    if (!condition())
        loop.exec();
    return condition();
}

PrivateBus::PrivateBus()
{
    QFile file(m_folder.filePath(u"bus.conf"_s));
    const QByteArray text = QString(configuration).arg(m_folder.filePath(u"bus"_s)).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("no configuration for the bus");
    file.close();
    // A test that crashes must not leave its bus behind.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + file.fileName()});
    if (!m_daemon.waitForReadyRead(limit))
        throw std::runtime_error("dbus-daemon does not start");
}

PrivateBus::~PrivateBus()
{
    for (const QString &name : m_names)
        QDBusConnection::disconnectFromBus(name);
    m_daemon.kill();
    m_daemon.waitForFinished(limit);
}

QDBusConnection PrivateBus::connection()
{
    static int count = 0;
    m_names.append(u"private-%1"_s.arg(++count));
    const QDBusConnection made = QDBusConnection::connectToBus(
        u"unix:path="_s + m_folder.filePath(u"bus"_s), m_names.last());
    if (!made.isConnected())
        throw std::runtime_error("the bus takes no connection");
    return made;
}

QDBusMessage call(const QDBusConnection &from, const QDBusMessage &message)
{
    const QDBusPendingCallWatcher watcher(from.asyncCall(message, limit));
    if (!eventually([&watcher] { return watcher.isFinished(); }))
        throw std::runtime_error("a call has no answer");
    return watcher.reply();
}

SignalLog::SignalLog(QDBusConnection connection, const QString &sender, const QString &path,
                     const QString &interface, const QString &name)
{
    if (!connection.connect(sender, path, interface, name, this, SLOT(record(QDBusMessage))))
        throw std::runtime_error("a signal cannot be listened for");
    // Qt does not wait for the bus to take the subscription; an answer to a later call says it has.
    call(connection,
         QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                        u"org.freedesktop.DBus"_s, u"GetId"_s));
}

void SignalLog::record(const QDBusMessage &message)
{
    m_messages.push_back(message);
}

} // namespace lumacap::freedesktop
