#include "platform/portal/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QRandomGenerator>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

// The call itself asks nobody and is answered at once, by a portal that is there.
constexpr int callLimit = 15'000; // milliseconds

/// Answers are few; whoever sends more than these sends rubbish.
constexpr qsizetype mostStrays = 16;

const auto requestInterface = u"org.freedesktop.portal.Request"_s;
const auto responseSignal = u"Response"_s;

/// What the first number of an answer says; any other: no.
namespace verdict {
constexpr uint granted = 0;
constexpr uint cancelled = 1;
} // namespace verdict

/// Unguessable, so that nobody else on the bus waits at the path for the answer.
QString newToken()
{
    return u"lumacap_%1"_s.arg(QRandomGenerator::system()->generate64(), 0, 16);
}

/// Where the request will be, by the portal's rule: a later subscription might miss the answer.
QString predictedHandle(const QDBusConnection &bus, const QString &token)
{
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return portalPath + u"/request/%1/%2"_s.arg(sender, token);
}

Result<QVariantMap> meaningOf(const QDBusMessage &response)
{
    if (response.signature() != "ua{sv}"_L1)
        return failure(u"the desktop's portal answered nonsense"_s);
    const uint told = response.arguments().at(0).toUInt();
    if (told == verdict::cancelled)
        return failure(u"it was cancelled"_s);
    if (told != verdict::granted)
        return failure(u"the desktop's portal refused"_s);
    return qdbus_cast<QVariantMap>(response.arguments().at(1));
}

} // namespace

/// Awaited until the request has an outcome.
struct PortalRequest::Ended {
    PortalRequest &request;

    bool await_ready() const { return request.m_hasEnded; }
    void await_suspend(std::coroutine_handle<> waiting) const { request.m_waiting = waiting; }
    void await_resume() const { }
};

QCoro::Task<Result<QVariantMap>> PortalRequest::ask(PortalAddress portal, Question question,
                                                    QObject *asker)
{
    PortalRequest request(std::move(portal), asker);
    request.start(std::move(question));
    co_await Ended{request};
    co_return std::move(request.m_outcome);
}

PortalRequest::PortalRequest(PortalAddress portal, const QObject *asker)
    : m_portal(std::move(portal))
    , m_token(newToken())
    , m_handle(predictedHandle(m_portal.bus, m_token))
    , m_owner(m_portal.owner, m_portal.bus, QDBusServiceWatcher::WatchForUnregistration)
{
    connect(&m_owner, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { end(failure(u"the desktop's portal has gone"_s)); });
    connect(asker, &QObject::destroyed, this, [this] { giveUp(u"nobody waits for it"_s); });
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this,
            [this] { giveUp(u"the desktop's portal did not answer in time"_s); });
    // At any path: old portals answer at another than the rule's, and only tell it in the call's
    // answer, which the signal may overtake.
    m_portal.bus.connect(m_portal.owner, {}, requestInterface, responseSignal, this,
                         SLOT(receive(QDBusMessage)));
}

PortalRequest::~PortalRequest()
{
    m_portal.bus.disconnect(m_portal.owner, {}, requestInterface, responseSignal, this,
                            SLOT(receive(QDBusMessage)));
}

void PortalRequest::start(Question question)
{
    m_limit.start(question.limit);
    question.options.insert(u"handle_token"_s, m_token);
    auto call = QDBusMessage::createMethodCall(m_portal.owner, portalPath, question.interface,
                                               question.method);
    call.setArguments(question.arguments << question.options);
    auto *const watcher =
        new QDBusPendingCallWatcher(m_portal.bus.asyncCall(call, callLimit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *finished) { follow(*finished); });
}

void PortalRequest::follow(const QDBusPendingCallWatcher &call)
{
    const QDBusMessage answer = call.reply();
    if (answer.type() != QDBusMessage::ReplyMessage) {
        const bool isSilent = answer.errorName() == "org.freedesktop.DBus.Error.NoReply"_L1;
        end(failure(isSilent ? u"the desktop's portal does not answer"_s
                             : u"the desktop's portal refused: %1"_s.arg(answer.errorMessage())));
        return;
    }
    const QVariant told = answer.arguments().value(0);
    if (told.metaType() != QMetaType::fromType<QDBusObjectPath>())
        return giveUp(u"the desktop's portal answered nonsense"_s);
    m_handle = qvariant_cast<QDBusObjectPath>(told).path();
    m_isHandleTold = true;
    if (const auto early = m_strays.constFind(m_handle); early != m_strays.cend())
        conclude(QDBusMessage(*early));
}

void PortalRequest::receive(const QDBusMessage &response)
{
    if (response.path() == m_handle)
        conclude(response);
    else if (!m_isHandleTold && m_strays.size() < mostStrays)
        m_strays.insert(response.path(), response);
}

void PortalRequest::conclude(const QDBusMessage &response)
{
    end(meaningOf(response));
}

void PortalRequest::giveUp(const QString &reason)
{
    m_portal.bus.send(
        QDBusMessage::createMethodCall(m_portal.owner, m_handle, requestInterface, u"Close"_s));
    end(failure(reason));
}

/// The last thing anybody does with the request, which whoever waits lets go at once.
void PortalRequest::end(Result<QVariantMap> outcome)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_outcome = std::move(outcome);
    if (const auto waiting = std::exchange(m_waiting, nullptr))
        waiting.resume();
}

} // namespace lumacap::portal
