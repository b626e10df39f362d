#include "StandInPortal.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

const auto name = u"org.freedesktop.portal.Desktop"_s;
const auto path = u"/org/freedesktop/portal/desktop"_s;
const auto requestInterface = u"org.freedesktop.portal.Request"_s;
const auto propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

/// Calls that are answered at once and with nothing.
const QStringList plainCalls{u"Close"_s, u"Register"_s};

QVariantMap optionsOf(const QDBusMessage &call)
{
    return qdbus_cast<QVariantMap>(call.arguments().constLast());
}

QString handleOf(const QDBusMessage &call)
{
    const QString sender = call.service().mid(1).replace(u'.', u'_');
    return path + u"/request/%1/%2"_s.arg(sender, optionsOf(call)[u"handle_token"_s].toString());
}

} // namespace

StandInPortal::StandInPortal(QDBusConnection connection)
    : m_connection(std::move(connection))
{
    if (!m_connection.registerVirtualObject(path, this, QDBusConnection::SubPath))
        throw std::runtime_error("the stand-in has no object");
}

StandInPortal::~StandInPortal()
{
    m_connection.unregisterObject(path, QDBusConnection::UnregisterTree);
}

void StandInPortal::appear()
{
    if (!m_connection.registerService(name))
        throw std::runtime_error("the stand-in gets no name");
}

void StandInPortal::vanish()
{
    m_connection.unregisterService(name);
}

QStringList StandInPortal::calls() const
{
    QStringList members;
    for (const QDBusMessage &call : m_calls)
        members.append(call.member());
    return members;
}

std::optional<QDBusMessage> StandInPortal::lastCall(const QString &member) const
{
    const auto last =
        std::find_if(m_calls.crbegin(), m_calls.crend(),
                     [&member](const QDBusMessage &call) { return call.member() == member; });
    return last == m_calls.crend() ? std::nullopt : std::optional(*last);
}

void StandInPortal::tell(const QString &from, const QString &interface, const QString &signal,
                         const QVariantList &arguments)
{
    auto message = QDBusMessage::createSignal(from, interface, signal);
    message.setArguments(arguments);
    m_connection.send(message);
}

QString StandInPortal::introspect(const QString & /*path*/) const
{
    return {};
}

bool StandInPortal::handleMessage(const QDBusMessage &message,
                                  const QDBusConnection & /*connection*/)
{
    if (message.interface() == propertiesInterface)
        return tellVersion(message);
    m_calls.append(message);
    Q_EMIT called(message.member());
    if (plainCalls.contains(message.member()))
        m_connection.send(message.createReply());
    else if (m_versions.contains(message.interface()))
        answerRequest(message);
    else
        return false;
    return true;
}

Manner StandInPortal::nextManner(const QString &method)
{
    auto &manners = m_manners[method];
    if (manners.isEmpty())
        return Manner::Grants;
    return manners.size() == 1 ? manners.first() : manners.takeFirst();
}

bool StandInPortal::tellVersion(const QDBusMessage &message)
{
    const auto version = m_versions.constFind(message.arguments().value(0).toString());
    if (version == m_versions.cend())
        return false;
    m_connection.send(message.createReply(QVariant::fromValue(QDBusVariant(*version))));
    return true;
}

void StandInPortal::respond(const QDBusMessage &call, const QString &from, uint verdict)
{
    const Results results = verdict == 0 ? m_results.value(call.member()) : Results();
    tell(from, requestInterface, u"Response"_s, {verdict, results ? results(call) : QVariantMap()});
}

void StandInPortal::leaveSoon()
{
    const auto leave = [this] {
        const QString own = m_connection.name();
        m_connection = QDBusConnection(u"none"_s);
        QDBusConnection::disconnectFromBus(own);
    };
    QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
}

void StandInPortal::answerRequest(const QDBusMessage &call)
{
    const QString handle = handleOf(call);
    const QString elsewhere = path + u"/request/of/its/own"_s;
    const Manner manner = nextManner(call.member());
    const auto nameHandle = [this, &call](const QString &told) {
        m_connection.send(call.createReply(QVariant::fromValue(QDBusObjectPath(told))));
    };
    switch (manner) {
    case Manner::Grants:
        nameHandle(handle);
        return respond(call, handle, 0);
    case Manner::Cancels:
        nameHandle(handle);
        return respond(call, handle, 1);
    case Manner::Refuses:
        nameHandle(handle);
        return respond(call, handle, 2);
    case Manner::KeepsSilent:
        return nameHandle(handle);
    case Manner::IgnoresTheCall:
        return call.setDelayedReply(true);
    case Manner::FailsTheCall:
        m_connection.send(call.createErrorReply(QDBusError::AccessDenied, u"not for you"_s));
        return;
    case Manner::NamesNonsense:
        m_connection.send(call.createReply(u"no path"_s));
        return;
    case Manner::AnswersNonsense:
        nameHandle(handle);
        return tell(handle, requestInterface, u"Response"_s, {u"yes"_s});
    case Manner::AnswersElsewhere:
        nameHandle(elsewhere);
        return respond(call, elsewhere, 0);
    case Manner::AnswersEarly:
        respond(call, elsewhere, 0);
        return nameHandle(elsewhere);
    case Manner::AnswersTwice:
        nameHandle(handle);
        respond(call, handle, 0);
        return respond(call, handle, 2);
    case Manner::Vanishes:
        nameHandle(handle);
        return leaveSoon();
    }
}

} // namespace lumacap::portal
