#include "platform/portal/Portal.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QPointer>
#include <QVariantMap>

#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

// Milliseconds. A portal starts its backends first, of which one that is missing is waited for.
constexpr int busLimit = 5'000;
constexpr int startLimit = 30'000;
constexpr int propertyLimit = 10'000;

const auto busName = u"org.freedesktop.DBus"_s;
const auto busPath = u"/org/freedesktop/DBus"_s;

QDBusMessage busCall(const QString &method, const QVariantList &arguments)
{
    auto call = QDBusMessage::createMethodCall(busName, busPath, busName, method);
    call.setArguments(arguments);
    return call;
}

} // namespace

Portal::Portal(QDBusConnection connection, QString applicationId)
    : m_connection(std::move(connection))
    , m_applicationId(std::move(applicationId))
{
}

QCoro::Task<QString> Portal::owner()
{
    auto bus = m_connection; // the object may go meanwhile
    const QString name = portalName;
    const QDBusMessage whoOwns = busCall(u"GetNameOwner"_s, {name});
    const QDBusMessage start = busCall(u"StartServiceByName"_s, {name, 0U});
    QDBusMessage owner = co_await bus.asyncCall(whoOwns, busLimit);
    if (owner.type() != QDBusMessage::ReplyMessage) {
        std::ignore = co_await bus.asyncCall(start, startLimit);
        owner = co_await bus.asyncCall(whoOwns, busLimit);
    }
    co_return owner.type() == QDBusMessage::ReplyMessage ? owner.arguments().value(0).toString()
                                                         : QString();
}

QCoro::Task<Result<PortalAddress>> Portal::reach()
{
    const QPointer self{this};
    if (!m_connection.isConnected())
        co_return failure(u"there is no session bus"_s);
    const QString found = co_await owner();
    if (!self || found.isEmpty())
        co_return failure(u"the desktop's portal does not start"_s);
    introduceTo(found);
    co_return PortalAddress{m_connection, found};
}

/// Nothing waits for the answer: a portal without this interface says so, and one that has it has
/// read the call before the next one.
void Portal::introduceTo(const QString &owner)
{
    if (std::exchange(m_introducedTo, owner) == owner)
        return;
    auto call = QDBusMessage::createMethodCall(
        owner, portalPath, u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
    call.setArguments({m_applicationId, QVariantMap()});
    m_connection.asyncCall(call, busLimit);
}

QCoro::Task<std::optional<uint>> Portal::versionOf(QString interface)
{
    const auto portal = co_await reach();
    if (!portal)
        co_return std::nullopt;
    auto question = QDBusMessage::createMethodCall(portal->owner, portalPath,
                                                   u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({interface, u"version"_s});
    auto bus = portal->bus;
    const QDBusMessage answer = co_await bus.asyncCall(question, propertyLimit);
    if (answer.type() != QDBusMessage::ReplyMessage)
        co_return std::nullopt;
    const QVariant version = qvariant_cast<QDBusVariant>(answer.arguments().value(0)).variant();
    co_return version.userType() == QMetaType::UInt ? std::optional(version.toUInt())
                                                    : std::nullopt;
}

} // namespace lumacap::portal
