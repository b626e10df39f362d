#include "platform/freedesktop/tray/TrayRegistration.h"

#include "platform/Spawn.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QPointer>

#include <array>
#include <chrono>
#include <utility>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int replyLimit = 10'000; // milliseconds

// Some watchers take their name first and can answer a moment later; the waits are bounded, so that
// a watcher that never answers is left alone.
constexpr std::array retryPauses{200ms, 500ms, 1000ms, 2000ms};

const auto watcherName = u"org.kde.StatusNotifierWatcher"_s;
const auto watcherPath = u"/StatusNotifierWatcher"_s;

} // namespace

TrayRegistration::TrayRegistration(QDBusConnection connection)
    : m_connection(std::move(connection))
{
    if (!m_connection.isConnected()) {
        m_place = TrayPlace::Homeless;
        return;
    }
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &TrayRegistration::enlist);
    m_owners.setConnection(m_connection);
    m_owners.addWatchedService(watcherName);
    connect(&m_owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { follow(owner); });
    // With no service named: Qt would stop to ask the bus who owns it, and a word from anybody else
    // brings about no more than a question to the watcher.
    for (const auto &change :
         {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        m_connection.connect({}, watcherPath, watcherName, change, this, SLOT(onHostsChanged()));
    spawn(findWatcher());
}

QCoro::Task<> TrayRegistration::findWatcher()
{
    const QPointer self{this};
    auto question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    question.setArguments({watcherName});
    const QDBusMessage answer = co_await m_connection.asyncCall(question, replyLimit);
    if (!self || m_place != TrayPlace::Unknown || !m_watcher.isEmpty())
        co_return; // gone meanwhile, or told by a change of owner
    follow(answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString()
                                                       : QString());
}

void TrayRegistration::follow(const QString &watcher)
{
    m_watcher = watcher;
    m_isRegistered = false;
    m_retries = 0;
    m_retry.stop();
    if (m_watcher.isEmpty())
        settle(TrayPlace::Homeless);
    else
        enlist();
}

void TrayRegistration::enlist()
{
    spawn(registerItem());
}

QCoro::Task<> TrayRegistration::registerItem()
{
    const QPointer self{this};
    const QString watcher = m_watcher;
    // To the owner itself: a call to the name would reach whoever took its place meanwhile.
    auto call = QDBusMessage::createMethodCall(watcher, watcherPath, watcherName,
                                               u"RegisterStatusNotifierItem"_s);
    call.setArguments({m_connection.baseService()});
    const QDBusMessage answer = co_await m_connection.asyncCall(call, replyLimit);
    if (!self || m_watcher != watcher || m_isRegistered)
        co_return;
    if (answer.type() != QDBusMessage::ReplyMessage) {
        retryLater();
        co_return;
    }
    m_isRegistered = true;
    m_retry.stop();
    spawn(findHost());
}

QCoro::Task<> TrayRegistration::findHost()
{
    const QPointer self{this};
    const QString watcher = m_watcher;
    auto question = QDBusMessage::createMethodCall(watcher, watcherPath,
                                                   u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({watcherName, u"IsStatusNotifierHostRegistered"_s});
    const QDBusMessage answer = co_await m_connection.asyncCall(question, replyLimit);
    if (!self || m_watcher != watcher)
        co_return;
    // A watcher without a host is what a session has that runs KDE's services and another panel.
    // One that cannot say is a panel's own, and host enough.
    const bool hasHost = answer.type() != QDBusMessage::ReplyMessage
        || qvariant_cast<QDBusVariant>(answer.arguments().value(0)).variant().toBool();
    settle(hasHost ? TrayPlace::Hosted : TrayPlace::Homeless);
}

void TrayRegistration::onHostsChanged()
{
    if (m_watcher.isEmpty())
        return;
    if (m_isRegistered)
        spawn(findHost());
    else
        enlist();
}

void TrayRegistration::retryLater()
{
    if (m_retry.isActive())
        return;
    if (m_retries < retryPauses.size())
        m_retry.start(retryPauses[m_retries++]);
    else
        settle(TrayPlace::Homeless);
}

void TrayRegistration::settle(TrayPlace place)
{
    if (std::exchange(m_place, place) != place)
        Q_EMIT placeChanged();
}

} // namespace lumacap::freedesktop
