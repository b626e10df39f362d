#include "platform/wlroots/sway/Ipc.h"

#include "platform/wayland/Connection.h"

#include <QJsonArray>
#include <QPointer>

#include <algorithm>
#include <utility>

#include <wayland-client-core.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::sway {

namespace {

// The compositor's queue of connections is three places long.
constexpr auto beforeNextAttempt = 20ms;
constexpr int mostAttempts = 40;

Ipc::Reply noAnswer()
{
    return failure(u"sway does not answer"_s);
}

Ipc::Reply replyOf(const QByteArray &payload)
{
    QJsonParseError error{};
    QJsonDocument document = QJsonDocument::fromJson(payload, &error);
    if (error.error != QJsonParseError::NoError)
        return failure(u"sway's answer can't be read"_s);
    return document;
}

} // namespace

Ipc::Ipc(QString path, std::chrono::milliseconds limit)
    : m_path(std::move(path))
    , m_limit(limit)
{
    m_connecting.setSingleShot(true);
    m_clock.setSingleShot(true);
    connect(&m_connecting, &QTimer::timeout, this, &Ipc::connectToServer);
    connect(&m_clock, &QTimer::timeout, this, &Ipc::giveUpLateOnes);
    connectToServer();
}

Ipc::~Ipc()
{
    close();
}

QString Ipc::path()
{
    const QString path = qEnvironmentVariable("SWAYSOCK");
    return path.isEmpty() ? qEnvironmentVariable("I3SOCK") : path;
}

bool Ipc::isOffered(const wayland::Connection &connection)
{
    UnixSocket socket;
    switch (socket.connectTo(path())) {
    case UnixSocket::Connecting::Done:
        return peerProcess(socket.descriptor()) == peerProcess(wl_display_get_fd(connection.raw()));
    case UnixSocket::Connecting::Busy: // nobody to be known yet, but somebody is there
        return true;
    case UnixSocket::Connecting::Refused:
        break;
    }
    return false;
}

void Ipc::connectToServer()
{
    switch (m_socket.connectTo(m_path)) {
    case UnixSocket::Connecting::Done:
        m_readable.emplace(m_socket.descriptor(), QSocketNotifier::Read);
        m_writable.emplace(m_socket.descriptor(), QSocketNotifier::Write);
        connect(&*m_readable, &QSocketNotifier::activated, this, &Ipc::read);
        connect(&*m_writable, &QSocketNotifier::activated, this, &Ipc::write);
        write();
        break;
    case UnixSocket::Connecting::Busy:
        if (++m_attempts < mostAttempts) {
            m_connecting.start(beforeNextAttempt);
            break;
        }
        [[fallthrough]];
    case UnixSocket::Connecting::Refused:
        close();
        break;
    }
}

void Ipc::ask(Request request, const QByteArray &payload, OnReply onReply)
{
    if (m_isClosed) {
        onReply(noAnswer());
        return;
    }
    m_questions.push_back({std::move(onReply), QDeadlineTimer(m_limit)});
    m_unsent += encoded(request, payload);
    watchTheClock();
    write();
}

AwaitedReply Ipc::ask(Request request, const QByteArray &payload)
{
    return {*this, request, payload};
}

void Ipc::subscribe(const QStringList &events)
{
    const QJsonDocument payload(QJsonArray::fromStringList(events));
    ask(Request::Subscribe, payload.toJson(QJsonDocument::Compact), [](const Reply &) { });
}

void Ipc::finish(std::chrono::milliseconds limit)
{
    const QPointer self(this);
    const QDeadlineTimer deadline(limit);
    while (self && !m_isClosed && !m_questions.empty() && m_writable) {
        write();
        const auto left = std::chrono::milliseconds(deadline.remainingTime());
        if (m_isClosed || left.count() == 0 || !m_socket.waitReadable(left))
            return;
        read();
    }
}

void Ipc::write()
{
    if (!m_writable) // not connected yet
        return;
    while (!m_unsent.isEmpty()) {
        const auto count = m_socket.write(m_unsent);
        if (!count) {
            close();
            return;
        }
        if (*count == 0)
            break;
        m_unsent.remove(0, *count);
    }
    m_writable->setEnabled(!m_unsent.isEmpty());
}

void Ipc::read()
{
    const auto bytes = m_socket.read();
    if (!bytes) {
        close();
        return;
    }
    m_reader.append(*bytes);
    dispatch();
}

void Ipc::dispatch()
{
    const QPointer self(this); // whoever is told may let the conversation go
    while (const auto message = m_reader.take()) {
        if (message->isEvent()) {
            if (const Reply facts = replyOf(message->payload))
                Q_EMIT happened(Event{message->type}, facts->object());
        } else {
            answer(message->payload);
        }
        if (!self || m_isClosed)
            return;
    }
    if (m_reader.isBroken())
        close();
}

void Ipc::answer(const QByteArray &payload)
{
    if (m_questions.empty()) // an answer to nothing
        return;
    const OnReply onReply = std::move(m_questions.front().onReply);
    m_questions.pop_front();
    watchTheClock();
    if (onReply)
        onReply(replyOf(payload));
}

/// They keep their places, for their answers may still come and are not the next question's.
void Ipc::giveUpLateOnes()
{
    std::vector<OnReply> late;
    for (Question &question : m_questions) {
        if (question.deadline.hasExpired() && question.onReply)
            late.push_back(std::exchange(question.onReply, {}));
    }
    watchTheClock();
    for (const OnReply &onReply : late)
        onReply(noAnswer());
}

void Ipc::watchTheClock()
{
    const auto waiting = std::ranges::find_if(
        m_questions, [](const Question &question) { return bool(question.onReply); });
    if (waiting == m_questions.end())
        m_clock.stop();
    else
        m_clock.start(static_cast<int>(waiting->deadline.remainingTime()) + 1);
}

void Ipc::close()
{
    if (std::exchange(m_isClosed, true))
        return;
    m_readable.reset();
    m_writable.reset();
    m_connecting.stop();
    m_clock.stop();
    m_socket.close();
    const std::deque<Question> unanswered = std::exchange(m_questions, {});
    for (const Question &question : unanswered) {
        if (question.onReply)
            question.onReply(noAnswer());
    }
}

AwaitedReply::AwaitedReply(Ipc &ipc, Request request, const QByteArray &payload)
    : m_state(std::make_shared<State>())
{
    ipc.ask(request, payload, [state = m_state](const Ipc::Reply &reply) {
        state->reply = reply;
        state->isAnswered = true;
        if (state->waiting)
            state->waiting.resume();
    });
}

bool isSuccess(const Ipc::Reply &reply)
{
    if (!reply || reply->array().isEmpty())
        return false;
    const QJsonArray results = reply->array();
    return std::ranges::all_of(
        results, [](const QJsonValue &result) { return result[u"success"].toBool(); });
}

} // namespace lumacap::sway
