#include "platform/kwin/hotkeys/GlobalShortcuts.h"

#include "platform/Spawn.h"

#include <QCoroDBusPendingCall>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QPointer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::kwin {

namespace {

constexpr int replyLimit = 5'000; // milliseconds

/// Keys that are held are told as pressed again and again. A release ends that; should it get lost,
/// it is over when even the most patient keyboard would have repeated.
constexpr auto longestRepetition = 6s;

const auto serviceName = u"org.kde.kglobalaccel"_s;
const auto componentName = u"app.lumacap.Lumacap"_s;
const auto componentTitle = u"Lumacap"_s;

// Of the service: the action's program is there; its keys are these, whatever was stored.
constexpr uint setPresent = 2;
constexpr uint noAutoloading = 4;

QStringList identifier(const ShortcutAction &action)
{
    return {componentName, action.name, componentTitle, action.title};
}

QDBusMessage serviceCall(const QString &owner, const QString &method, const QVariantList &arguments)
{
    auto call = QDBusMessage::createMethodCall(owner, u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s,
                                               method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

QDBusMessage keysCall(const QString &owner, const ShortcutAction &action, const QList<int> &keys)
{
    return serviceCall(owner, u"setShortcut"_s,
                       {identifier(action), QVariant::fromValue(keys), setPresent | noAutoloading});
}

} // namespace

GlobalShortcuts::GlobalShortcuts(QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_owners(serviceName, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    qDBusRegisterMetaType<QList<int>>();
    connect(&m_owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { follow(owner); });
    // With no service named: the toolkit would stop to ask the bus who owns it. Who speaks is
    // looked at when it comes.
    m_bus.connect({}, {}, u"org.kde.kglobalaccel.Component"_s, u"globalShortcutPressed"_s, this,
                  SLOT(onPressed(QString, QString)));
    m_bus.connect({}, {}, u"org.kde.kglobalaccel.Component"_s, u"globalShortcutReleased"_s, this,
                  SLOT(onReleased(QString, QString)));
    spawn(findOwner());
}

QCoro::Task<> GlobalShortcuts::findOwner()
{
    const QPointer self{this};
    auto question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    question.setArguments({serviceName});
    const QDBusMessage answer = co_await m_bus.asyncCall(question, replyLimit);
    if (self && m_owner.isEmpty() && answer.type() == QDBusMessage::ReplyMessage)
        follow(answer.arguments().value(0).toString());
}

void GlobalShortcuts::follow(const QString &owner)
{
    m_owner = owner;
    m_held.clear();
    if (!m_owner.isEmpty())
        Q_EMIT appeared();
}

QCoro::Task<QList<int>> GlobalShortcuts::setKeys(ShortcutAction action, QList<int> keys)
{
    send(u"doRegister"_s, {identifier(action)});
    const QDBusMessage call = keysCall(m_owner, action, keys);
    const QDBusMessage reply = co_await m_bus.asyncCall(call, replyLimit);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != u"ai"_s)
        co_return QList<int>();
    co_return qdbus_cast<QList<int>>(reply.arguments().value(0));
}

void GlobalShortcuts::rest(const ShortcutAction &action)
{
    m_held.remove(action.name);
    send(u"setInactive"_s, {identifier(action)});
}

void GlobalShortcuts::forget(const ShortcutAction &action)
{
    m_held.remove(action.name);
    send(u"unregister"_s, {componentName, action.name});
}

/// The service takes the calls in their order, so that no answer is waited for.
void GlobalShortcuts::send(const QString &method, const QVariantList &arguments)
{
    if (isThere())
        m_bus.send(serviceCall(m_owner, method, arguments));
}

void GlobalShortcuts::onPressed(const QString &component, const QString &action)
{
    if (!isOurs(component))
        return;
    const bool isRepetition = m_held.contains(action) && !m_held.value(action).hasExpired();
    m_held.insert(action, QDeadlineTimer(longestRepetition));
    if (!isRepetition)
        Q_EMIT pressed(action);
}

void GlobalShortcuts::onReleased(const QString &component, const QString &action)
{
    if (isOurs(component))
        m_held.remove(action);
}

/// Of a signal that is being told.
bool GlobalShortcuts::isOurs(const QString &component) const
{
    return component == componentName && message().service() == m_owner;
}

} // namespace lumacap::kwin
