#include "platform/wayland/Connection.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <wayland-client-core.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

/// At the start of a session the compositor has much to do, and without its first answer the
/// program could do nothing for as long as it runs.
constexpr auto firstAnswerLimit = 8s;

} // namespace

void Connection::Disconnect::operator()(wl_display *display) const noexcept
{
    wl_display_disconnect(display);
}

bool Connection::answers()
{
    // Without the variable the library would look for wayland-0.
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    const std::unique_ptr<wl_display, Disconnect> probe(wl_display_connect(nullptr));
    return probe != nullptr;
}

Result<std::unique_ptr<Connection>> Connection::open()
{
    std::unique_ptr<wl_display, Disconnect> display;
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        display.reset(wl_display_connect(nullptr));
    if (display == nullptr)
        return failure(u"no Wayland compositor answers"_s);
    std::unique_ptr<Connection> connection(new Connection(std::move(display)));
    if (!connection->roundTrip(firstAnswerLimit))
        return failure(u"the Wayland compositor does not answer"_s);
    return connection;
}

Connection::Connection(std::unique_ptr<wl_display, Disconnect> display)
    : m_display(std::move(display))
    , m_registry(owned(wl_display_get_registry(raw()), &wl_registry_destroy))
    , m_readable(wl_display_get_fd(raw()), QSocketNotifier::Read)
    , m_writable(wl_display_get_fd(raw()), QSocketNotifier::Write)
{
    m_writable.setEnabled(false);
    connect(&m_readable, &QSocketNotifier::activated, this, &Connection::process);
    connect(&m_writable, &QSocketNotifier::activated, this, &Connection::flush);
    wl_registry_add_listener(m_registry.get(), &registryListener(), this);
}

Connection::~Connection() = default;

const wl_registry_listener &Connection::registryListener()
{
    static constexpr wl_registry_listener listener{
        .global =
            [](void *self, wl_registry * /*registry*/, std::uint32_t number, const char *interface,
               std::uint32_t version) {
                auto &connection = *static_cast<Connection *>(self);
                connection.m_offers.push_back({number, interface, version});
                Q_EMIT connection.appeared(number, interface);
            },
        .global_remove =
            [](void *self, wl_registry * /*registry*/, std::uint32_t number) {
                auto &connection = *static_cast<Connection *>(self);
                std::erase_if(connection.m_offers,
                              [number](const Offer &offer) { return offer.number == number; });
                Q_EMIT connection.disappeared(number);
            },
    };
    return listener;
}

const Connection::Offer *Connection::offerOf(const wl_interface &interface) const
{
    const auto found = std::ranges::find(m_offers, QByteArray(interface.name), &Offer::interface);
    return found == m_offers.end() ? nullptr : &*found;
}

bool Connection::offers(const wl_interface &interface, std::uint32_t version) const
{
    const Offer *const offer = offerOf(interface);
    return offer != nullptr && offer->version >= version;
}

std::vector<std::uint32_t> Connection::numbersOf(const wl_interface &interface) const
{
    std::vector<std::uint32_t> numbers;
    for (const Offer &offer : m_offers) {
        if (offer.interface == interface.name)
            numbers.push_back(offer.number);
    }
    return numbers;
}

void *Connection::bindAny(const wl_interface &interface, std::uint32_t version)
{
    const Offer *const offer = offerOf(interface);
    return offer == nullptr ? nullptr : bindNumber(offer->number, interface, version);
}

void *Connection::bindNumber(std::uint32_t number, const wl_interface &interface,
                             std::uint32_t version)
{
    const auto offer = std::ranges::find(m_offers, number, &Offer::number);
    if (offer == m_offers.end())
        return nullptr;
    return wl_registry_bind(m_registry.get(), number, &interface,
                            std::min(version, offer->version));
}

void Connection::flush()
{
    // A compositor that is busy leaves the socket full: the rest goes when there is room.
    const bool isFull = wl_display_flush(raw()) < 0 && errno == EAGAIN;
    m_writable.setEnabled(isFull && !m_isClosed);
}

bool Connection::readEvents()
{
    while (wl_display_prepare_read(raw()) != 0) {
        if (wl_display_dispatch_pending(raw()) < 0)
            return false;
    }
    return wl_display_read_events(raw()) == 0 && wl_display_dispatch_pending(raw()) >= 0;
}

void Connection::process()
{
    const bool isOpen = readEvents();
    flush(); // what the events' readers asked for
    if (!isOpen)
        close();
}

void Connection::close()
{
    if (m_isClosed)
        return;
    m_isClosed = true;
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    Q_EMIT closed();
}

bool Connection::waitReadable(std::chrono::milliseconds limit)
{
    pollfd descriptor{.fd = wl_display_get_fd(raw()), .events = POLLIN, .revents = 0};
    return poll(&descriptor, 1, static_cast<int>(limit.count())) > 0 || errno == EINTR;
}

bool Connection::roundTrip(std::chrono::milliseconds limit)
{
    static constexpr wl_callback_listener listener{
        .done = [](void *answered, wl_callback * /*callback*/, std::uint32_t /*serial*/) {
            *static_cast<bool *>(answered) = true;
        }};
    bool isAnswered = false;
    const auto callback = owned(wl_display_sync(raw()), &wl_callback_destroy);
    wl_callback_add_listener(callback.get(), &listener, &isAnswered);
    const QDeadlineTimer deadline(limit);
    while (!isAnswered) {
        flush();
        const auto left = std::chrono::milliseconds(deadline.remainingTime());
        if (left.count() == 0 || !waitReadable(left) || !readEvents())
            return false;
    }
    return true;
}

} // namespace lumacap::wayland
