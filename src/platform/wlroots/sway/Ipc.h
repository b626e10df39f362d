#pragma once

#include "platform/Result.h"
#include "platform/wlroots/sway/Messages.h"
#include "platform/wlroots/sway/UnixSocket.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <coroutine>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace lumacap::wayland {
class Connection;
}

namespace lumacap::sway {

class AwaitedReply;

/// A conversation with the compositor over its socket, served by the main loop. Nothing in it
/// waits, and every question is answered in bounded time, if by a failure: the compositor hangs,
/// has gone, refuses, or talks nonsense. One that ended stays ended.
class Ipc final : public QObject {
    Q_OBJECT

public:
    using Reply = Result<QJsonDocument>;
    using OnReply = std::function<void(const Reply &)>;

    /// To the socket at `path`, each question answered within `limit`.
    explicit Ipc(QString path, std::chrono::milliseconds limit = std::chrono::milliseconds(1000));
    /// Answers what is still asked.
    ~Ipc() override;
    Q_DISABLE_COPY_MOVE(Ipc)

    /// Where the compositor of this session listens; empty where none does.
    static QString path();
    /// Whether somebody listens there, and the same who shows our windows: the variable may have
    /// been left behind by another session.
    static bool isOffered(const wayland::Connection &connection);

    /// Asks, after all that was asked before; `onReply` is called once, within the call where the
    /// conversation has ended.
    void ask(Request request, const QByteArray &payload, OnReply onReply);
    /// The same, to be awaited; asked at once.
    AwaitedReply ask(Request request, const QByteArray &payload = {});
    /// From now on these events happen; for the life of the conversation.
    void subscribe(const QStringList &events);

    /// Sends what is asked and waits until all of it is answered, at most for `limit`: for the end
    /// of an owner whose last word must have arrived.
    void finish(std::chrono::milliseconds limit);

Q_SIGNALS:
    void happened(lumacap::sway::Event event, const QJsonObject &facts);

private:
    struct Question {
        OnReply onReply; ///< empty once called
        QDeadlineTimer deadline;
    };

    void connectToServer();
    void write();
    void read();
    void dispatch();
    void answer(const QByteArray &payload);
    void giveUpLateOnes();
    void watchTheClock();
    void close();

    UnixSocket m_socket;
    QString m_path;
    std::chrono::milliseconds m_limit;
    std::optional<QSocketNotifier> m_readable;
    std::optional<QSocketNotifier> m_writable;
    QTimer m_connecting;
    QTimer m_clock;
    MessageReader m_reader;
    QByteArray m_unsent;
    std::deque<Question> m_questions; // the compositor answers in their order
    int m_attempts = 0;
    bool m_isClosed = false;
};

/// What `Ipc::ask` answers.
class AwaitedReply {
public:
    AwaitedReply(Ipc &ipc, Request request, const QByteArray &payload);

    bool await_ready() const { return m_state->isAnswered; }
    void await_suspend(std::coroutine_handle<> waiting) { m_state->waiting = waiting; }
    Ipc::Reply await_resume() { return m_state->reply; }

private:
    struct State {
        Ipc::Reply reply;
        bool isAnswered = false;
        std::coroutine_handle<> waiting;
    };

    std::shared_ptr<State> m_state; // shared by who waits and who answers, in either order
};

/// Whether the answer to a command says that it was carried out.
bool isSuccess(const Ipc::Reply &reply);

} // namespace lumacap::sway
