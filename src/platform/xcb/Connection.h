#pragma once

#include "platform/Result.h"
#include "platform/xcb/Owned.h"

#include <QByteArray>
#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <coroutine>
#include <cstdint>
#include <memory>
#include <vector>

struct xcb_connection_t;
struct xcb_screen_t;

namespace lumacap::xcb {

class PendingReply;
template <class Reply>
class AwaitedReply;

/// A connection of our own to the X server, served by the main loop. It stands beside the
/// toolkit's, so that it works in a process without one and under Wayland, and so that what we ask
/// never waits in the toolkit's event queue.
class Connection final : public QObject {
    Q_OBJECT

public:
    /// True when the server that DISPLAY names takes connections.
    static bool answers();
    /// To the server that DISPLAY names. An application object exists, whose loop serves the
    /// connection.
    static Result<std::unique_ptr<Connection>> open();
    ~Connection() override;
    Q_DISABLE_COPY_MOVE(Connection)

    xcb_connection_t *raw() const { return m_connection.get(); }
    const xcb_screen_t &screen() const { return *m_screen; }
    /// True when the server can map memory of ours: it listens on a local socket and speaks
    /// MIT-SHM 1.2, whose segments are file descriptors.
    bool sharesMemory() const { return m_sharesMemory; }
    bool hasFixes() const { return m_hasFixes; }
    /// True when the server tells what is drawn. Who asks it to introduces itself first, with the
    /// version it speaks.
    bool hasDamage() const { return m_hasDamage; }
    /// True when the server knows RandR 1.5, which has monitors.
    bool hasMonitors() const { return m_hasMonitors; }

    /// Sends what was requested, and sees to what came in meanwhile.
    void flush();

    /// Answers everybody who waits for a reply now that there will be none; for an owner that ends.
    void abandonReplies();

    /// The atom of `name`; asks the server once per name, waiting for its answer.
    std::uint32_t atom(const QByteArray &name);

    /// The reply to a request already made, to be awaited: a `Result<Owned<Reply>>`, whose failure
    /// is the server's refusal, its end, or no answer within ten seconds.
    template <class Reply, class Cookie>
    AwaitedReply<Reply> reply(Cookie cookie)
    {
        return AwaitedReply<Reply>(*this, cookie.sequence);
    }

Q_SIGNALS:
    /// An event, valid for the length of the call: an `xcb_generic_event_t`, never an error.
    void received(const void *event);
    /// The server has gone; nothing more will come.
    void closed();

private:
    friend class PendingReply;
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const noexcept;
    };

    explicit Connection(std::unique_ptr<xcb_connection_t, Disconnect> connection, int screenNumber);
    void learnExtensions();
    void process();
    bool dispatchEvents();
    bool resumeAnswered();

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    const xcb_screen_t *m_screen = nullptr;
    QSocketNotifier m_readable;
    QHash<QByteArray, std::uint32_t> m_atoms;
    std::vector<PendingReply *> m_pending;
    bool m_sharesMemory = false;
    bool m_hasFixes = false;
    bool m_hasDamage = false;
    bool m_hasMonitors = false;
    bool m_isClosed = false;
};

/// A request whose reply some coroutine waits for.
class PendingReply {
public:
    PendingReply(Connection &connection, unsigned int sequence);
    Q_DISABLE_COPY_MOVE(PendingReply)
    ~PendingReply() = default;

    /// True once there is a reply, an error or no hope.
    bool poll();
    /// Sees to it that `waiting` is resumed when there is.
    void suspend(std::coroutine_handle<> waiting);
    Result<Owned<void>> takeAnswer() { return std::move(m_answer); }

private:
    friend class Connection;

    Connection &m_connection;
    unsigned int m_sequence;
    Result<Owned<void>> m_answer{Owned<void>()};
    std::coroutine_handle<> m_waiting;
    QTimer m_limit;
};

/// What `Connection::reply` answers. Its state is behind a pointer because a compiler may move an
/// awaitable.
template <class Reply>
class AwaitedReply {
public:
    AwaitedReply(Connection &connection, unsigned int sequence)
        : m_pending(std::make_unique<PendingReply>(connection, sequence))
    {
    }

    bool await_ready() { return m_pending->poll(); }
    void await_suspend(std::coroutine_handle<> waiting) { m_pending->suspend(waiting); }
    Result<Owned<Reply>> await_resume()
    {
        Result<Owned<void>> answer = m_pending->takeAnswer();
        if (!answer)
            return std::unexpected(std::move(answer).error());
        return Owned<Reply>(static_cast<Reply *>(answer->release()));
    }

private:
    std::unique_ptr<PendingReply> m_pending;
};

} // namespace lumacap::xcb
