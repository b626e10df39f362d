#include "app/ApplicationInterface.h"

#include "platform/freedesktop/ApplicationId.h"

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap {

namespace {

constexpr std::chrono::milliseconds busLimit = 5s;

// Of the bus's RequestName (D-Bus specification, "Message Bus Messages").
constexpr uint doNotQueue = 4;
constexpr uint primaryOwner = 1;
constexpr uint alreadyOwner = 4;

QDBusMessage callOfTheBus(const QString &method)
{
    return QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                          u"org.freedesktop.DBus"_s, method);
}

} // namespace

const QString ApplicationInterface::serviceName = QString(freedesktop::applicationId);
const QString ApplicationInterface::objectPath = u"/app/lumacap/Lumacap"_s;
const QString ApplicationInterface::interfaceName = u"org.freedesktop.Application"_s;

ApplicationInterface::ApplicationInterface(QObject *owner, QDBusConnection bus)
    : QDBusAbstractAdaptor(owner)
    , m_bus(std::move(bus))
{
}

ApplicationInterface::Claim ApplicationInterface::claimName()
{
    // The object first: whoever sees the name may call at once.
    if (!m_bus.isConnected() || !m_bus.registerObject(objectPath, parent()))
        return Claim::NoBus;
    QDBusMessage request = callOfTheBus(u"RequestName"_s);
    request << serviceName << doNotQueue;
    const QDBusMessage reply =
        m_bus.call(request, QDBus::Block, static_cast<int>(busLimit.count()));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return Claim::NoBus;
    const uint answer = reply.arguments().first().toUInt();
    if (answer == primaryOwner || answer == alreadyOwner)
        return Claim::Owned;
    m_bus.unregisterObject(objectPath); // so that it can be exported again
    return Claim::Taken;
}

void ApplicationInterface::release()
{
    m_bus.unregisterObject(objectPath);
    QDBusMessage request = callOfTheBus(u"ReleaseName"_s);
    request << serviceName;
    m_bus.send(request);
}

void ApplicationInterface::setHandler(std::function<void(Command)> handler)
{
    m_handler = std::move(handler);
    for (const Command command : std::exchange(m_early, {}))
        m_handler(command);
}

void ApplicationInterface::Activate(const QVariantMap & /*platformData*/) { }

void ApplicationInterface::Open(const QStringList & /*uris*/, const QVariantMap & /*platformData*/)
{
}

void ApplicationInterface::ActivateAction(const QString &name, const QVariantList & /*parameters*/,
                                          const QVariantMap & /*platformData*/,
                                          const QDBusMessage &message)
{
    const auto command = commandNamed(name);
    if (!command) {
        message.setDelayedReply(true);
        if (message.isReplyRequired())
            m_bus.send(message.createErrorReply(QDBusError::InvalidArgs,
                                                u"There is no action '%1'"_s.arg(name)));
        return;
    }
    if (m_handler)
        m_handler(*command);
    else
        m_early.push_back(*command);
}

} // namespace lumacap
