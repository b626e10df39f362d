#include "platform/gnome/ScreenCast.h"

#include <QCoroDBusPendingCall>
#include <QCoroSignal>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPointer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::gnome {

namespace {

const QString service = u"org.gnome.Mutter.ScreenCast"_s;
const QString sessionInterface = u"org.gnome.Mutter.ScreenCast.Session"_s;
const QString streamInterface = u"org.gnome.Mutter.ScreenCast.Stream"_s;

constexpr auto stepLimit = 3s;
// A session that comes later than anybody waits for it is ended when it comes.
constexpr auto lateSessionLimit = 10min;

constexpr auto paintedPointer = 1U;
constexpr auto toldPointer = 2U;

int milliseconds(std::chrono::milliseconds time)
{
    return static_cast<int>(time.count());
}

void stop(const QDBusConnection &bus, const QString &shell, const QString &session)
{
    bus.send(QDBusMessage::createMethodCall(shell, session, sessionInterface, u"Stop"_s));
}

/// Why the shell did not do what it was asked to.
std::unexpected<Failure> refusal(const QDBusMessage &answer)
{
    const QString why = answer.errorMessage();
    return failure(why.isEmpty() ? u"the desktop shell gave an answer that means nothing"_s
                                 : u"the desktop shell refused: "_s + why);
}

/// The one object path that a well-formed answer holds.
std::optional<QDBusObjectPath> pathIn(const QDBusMessage &answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != u"o"_s)
        return std::nullopt;
    return qvariant_cast<QDBusObjectPath>(answer.arguments().constFirst());
}

} // namespace

ScreenCast::ScreenCast(QDBusConnection bus)
    : m_bus(std::move(bus))
{
}

ScreenCast::~ScreenCast()
{
    if (!m_session.isEmpty())
        stop(m_bus, m_shell, m_session);
}

QCoro::Task<Result<std::uint32_t>> ScreenCast::start(QString connector, CastPointer pointer)
{
    const auto created = co_await createSession();
    if (!created)
        co_return std::unexpected(created.error());
    const auto stream = co_await recordMonitor(connector, pointer);
    if (!stream)
        co_return std::unexpected(stream.error());
    // By the unique name: for any other the toolkit waits until the bus has told whose it is.
    m_bus.connect(m_shell, stream->path(), streamInterface, u"PipeWireStreamAdded"_s, u"u"_s, this,
                  SLOT(takeNode(uint)));
    const auto begin =
        QDBusMessage::createMethodCall(m_shell, m_session, sessionInterface, u"Start"_s);
    const QDBusMessage begun = co_await m_bus.asyncCall(begin, milliseconds(stepLimit));
    if (begun.type() != QDBusMessage::ReplyMessage)
        co_return refusal(begun);
    if (!m_node)
        co_await qCoro(this, &ScreenCast::nodeAdded, stepLimit);
    if (!m_node)
        co_return failure(u"the desktop shell does not give its picture to PipeWire"_s);
    co_return *m_node;
}

void ScreenCast::takeNode(uint node)
{
    m_node = node;
    Q_EMIT nodeAdded();
}

QCoro::Task<Result<void>> ScreenCast::createSession()
{
    requestSession();
    const auto answered = co_await qCoro(this, &ScreenCast::sessionAnswered, stepLimit);
    if (!answered)
        co_return failure(u"the desktop shell does not answer"_s);
    if (m_session.isEmpty())
        co_return failure(u"the desktop shell does not let its screen be taken"_s);
    co_return {};
}

void ScreenCast::requestSession()
{
    auto question = QDBusMessage::createMethodCall(service, u"/org/gnome/Mutter/ScreenCast"_s,
                                                   service, u"CreateSession"_s);
    question << QVariantMap();
    // Lives until the answer is there, longer than this object if need be, and then ends itself.
    auto *const answer =
        new QDBusPendingCallWatcher(m_bus.asyncCall(question, milliseconds(lateSessionLimit)));
    connect(answer, &QDBusPendingCallWatcher::finished, answer,
            [answer, self = QPointer(this), bus = m_bus] {
                answer->deleteLater();
                const QDBusMessage reply = answer->reply();
                if (self)
                    self->takeSession(reply);
                else if (const auto session = pathIn(reply))
                    stop(bus, reply.service(), session->path());
            });
}

void ScreenCast::takeSession(const QDBusMessage &answer)
{
    if (const auto session = pathIn(answer)) {
        m_shell = answer.service();
        m_session = session->path();
    }
    Q_EMIT sessionAnswered();
}

QCoro::Task<Result<QDBusObjectPath>> ScreenCast::recordMonitor(QString connector,
                                                               CastPointer pointer)
{
    auto question =
        QDBusMessage::createMethodCall(m_shell, m_session, sessionInterface, u"RecordMonitor"_s);
    const uint mode = pointer == CastPointer::Painted ? paintedPointer : toldPointer;
    // To the shell a cast is a recording or the sharing of a screen. Of sharing it warns in the
    // panel for five seconds, within the pictures, and moves the icons there for it.
    question << connector << QVariantMap{{u"cursor-mode"_s, mode}, {u"is-recording"_s, true}};
    const QDBusMessage answer = co_await m_bus.asyncCall(question, milliseconds(stepLimit));
    const auto stream = pathIn(answer);
    if (!stream)
        co_return refusal(answer);
    co_return *stream;
}

} // namespace lumacap::gnome
