#include "platform/xcb/Connection.h"

#include <QMetaObject>

#include <algorithm>
#include <array>
#include <chrono>

#include <sys/socket.h>

#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::xcb {

namespace {

constexpr auto replyLimit = 10s;

const xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

bool isLocal(xcb_connection_t *connection)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    const int socket = xcb_get_file_descriptor(connection);
    return getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size) == 0
        && address.ss_family == AF_UNIX;
}

bool isPresent(xcb_connection_t *connection, xcb_extension_t &extension)
{
    const auto *const data = xcb_get_extension_data(connection, &extension);
    return data != nullptr && data->present != 0;
}

/// The names of the core protocol's errors, for a person who reports one.
QString errorName(std::uint8_t code)
{
    constexpr std::array names{"Request", "Value",         "Window",   "Pixmap",   "Atom",
                               "Cursor",  "Font",          "Match",    "Drawable", "Access",
                               "Alloc",   "Colormap",      "GContext", "IDChoice", "Name",
                               "Length",  "Implementation"};
    if (code == 0 || code > names.size())
        return u"error %1"_s.arg(code);
    return "Bad"_L1 + QLatin1StringView(names.at(code - 1U));
}

} // namespace

void Connection::Disconnect::operator()(xcb_connection_t *connection) const noexcept
{
    xcb_disconnect(connection);
}

bool Connection::answers()
{
    const std::unique_ptr<xcb_connection_t, Disconnect> probe(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(probe.get()) == 0;
}

Result<std::unique_ptr<Connection>> Connection::open()
{
    int screenNumber = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return failure(u"no X server answers"_s);
    return std::unique_ptr<Connection>(new Connection(std::move(connection), screenNumber));
}

Connection::Connection(std::unique_ptr<xcb_connection_t, Disconnect> connection, int screenNumber)
    : m_connection(std::move(connection))
    , m_screen(screenOf(raw(), screenNumber))
    , m_readable(xcb_get_file_descriptor(raw()), QSocketNotifier::Read)
{
    connect(&m_readable, &QSocketNotifier::activated, this, &Connection::process);
    learnExtensions();
}

Connection::~Connection() = default;

void Connection::learnExtensions()
{
    xcb_prefetch_maximum_request_length(raw());
    for (xcb_extension_t *extension : {&xcb_shm_id, &xcb_randr_id, &xcb_xfixes_id, &xcb_damage_id})
        xcb_prefetch_extension_data(raw(), extension);
    const bool hasShm = isPresent(raw(), xcb_shm_id);
    const bool hasRandr = isPresent(raw(), xcb_randr_id);
    m_hasFixes = isPresent(raw(), xcb_xfixes_id);
    m_hasDamage = isPresent(raw(), xcb_damage_id);

    // The three questions travel together; the answers are then all there.
    const auto shm = hasShm ? xcb_shm_query_version(raw()) : xcb_shm_query_version_cookie_t{};
    const auto randr =
        hasRandr ? xcb_randr_query_version(raw(), 1, 5) : xcb_randr_query_version_cookie_t{};
    const auto fixes =
        m_hasFixes ? xcb_xfixes_query_version(raw(), 4, 0) : xcb_xfixes_query_version_cookie_t{};
    if (hasShm) {
        const Owned<xcb_shm_query_version_reply_t> version(
            xcb_shm_query_version_reply(raw(), shm, nullptr));
        m_sharesMemory = isLocal(raw()) && version != nullptr
            && (version->major_version > 1 || version->minor_version >= 2);
    }
    if (hasRandr) {
        const Owned<xcb_randr_query_version_reply_t> version(
            xcb_randr_query_version_reply(raw(), randr, nullptr));
        m_hasMonitors =
            version != nullptr && (version->major_version > 1 || version->minor_version >= 5);
    }
    if (m_hasFixes) { // the server refuses every later XFixes request of a client that never asked
        const Owned<xcb_xfixes_query_version_reply_t> version(
            xcb_xfixes_query_version_reply(raw(), fixes, nullptr));
        m_hasFixes = version != nullptr;
    }
}

void Connection::flush()
{
    xcb_flush(raw());
    // While it writes, or waits for an answer, libxcb also reads: what came in that way wakes no
    // notifier.
    QMetaObject::invokeMethod(this, &Connection::process, Qt::QueuedConnection);
}

std::uint32_t Connection::atom(const QByteArray &name)
{
    if (const auto known = m_atoms.constFind(name); known != m_atoms.cend())
        return *known;
    const auto cookie =
        xcb_intern_atom(raw(), 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(raw(), cookie, nullptr));
    flush();
    if (reply == nullptr)
        return XCB_ATOM_NONE;
    m_atoms.insert(name, reply->atom);
    return reply->atom;
}

void Connection::process()
{
    // A resumed coroutine makes requests of its own, and libxcb may read ahead while it sends them.
    bool sawSomething = true;
    while (sawSomething) {
        sawSomething = dispatchEvents();
        sawSomething = resumeAnswered() || sawSomething;
    }
    if (xcb_connection_has_error(raw()) == 0 || m_isClosed)
        return;
    m_isClosed = true;
    m_readable.setEnabled(false);
    Q_EMIT closed();
}

bool Connection::dispatchEvents()
{
    bool sawSomething = false;
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(raw())}) {
        sawSomething = true;
        if (event->response_type != 0) // an error of a request whose failure nobody minds
            Q_EMIT received(event.get());
    }
    return sawSomething;
}

bool Connection::resumeAnswered()
{
    const auto answered = std::ranges::find_if(m_pending, &PendingReply::poll);
    if (answered == m_pending.end())
        return false;
    const auto waiting = (*answered)->m_waiting;
    m_pending.erase(answered);
    waiting.resume();
    return true;
}

void Connection::abandonReplies()
{
    while (!m_pending.empty()) {
        PendingReply *const pending = m_pending.back();
        m_pending.pop_back();
        xcb_discard_reply(raw(), pending->m_sequence);
        pending->m_answer = failure(u"nobody waits for it any more"_s);
        pending->m_waiting.resume();
    }
}

PendingReply::PendingReply(Connection &connection, unsigned int sequence)
    : m_connection(connection)
    , m_sequence(sequence)
{
}

bool PendingReply::poll()
{
    void *reply = nullptr;
    xcb_generic_error_t *error = nullptr;
    if (xcb_poll_for_reply(m_connection.raw(), m_sequence, &reply, &error) == 0)
        return false;
    const Owned<xcb_generic_error_t> refusal(error);
    if (reply != nullptr)
        m_answer = Owned<void>(reply);
    else if (refusal != nullptr)
        m_answer =
            failure(u"the X server refused the request (%1)"_s.arg(errorName(refusal->error_code)));
    else
        m_answer = failure(u"the X server has gone"_s);
    return true;
}

void PendingReply::suspend(std::coroutine_handle<> waiting)
{
    m_waiting = waiting;
    m_connection.m_pending.push_back(this);
    m_connection.flush();
    m_limit.setSingleShot(true);
    QObject::connect(&m_limit, &QTimer::timeout, &m_connection, [this] {
        xcb_discard_reply(m_connection.raw(), m_sequence);
        m_answer = failure(u"the X server does not answer"_s);
        std::erase(m_connection.m_pending, this);
        // Resuming destroys this object, and with it the timer that is being served right now.
        QMetaObject::invokeMethod(
            &m_connection, [waiting = m_waiting] { waiting.resume(); }, Qt::QueuedConnection);
    });
    m_limit.start(replyLimit);
}

} // namespace lumacap::xcb
