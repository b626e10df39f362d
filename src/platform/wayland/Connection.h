#pragma once

#include "platform/Result.h"
#include "platform/wayland/Owned.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

struct wl_display;
struct wl_interface;
struct wl_registry;
struct wl_registry_listener;

namespace lumacap::wayland {

/// A connection of our own to the compositor, served by the main loop. It stands beside the
/// toolkit's, so that it works in a process without one, and so that what we ask never waits for
/// the toolkit.
class Connection final : public QObject {
    Q_OBJECT

public:
    /// True when a compositor takes connections where WAYLAND_DISPLAY says, which may be left over
    /// from a session that has ended.
    static bool answers();
    /// To the compositor that WAYLAND_DISPLAY names, once it has told what it offers; fails when it
    /// has not within two seconds. An application object exists, whose loop serves the connection.
    static Result<std::unique_ptr<Connection>> open();
    ~Connection() override;
    Q_DISABLE_COPY_MOVE(Connection)

    wl_display *raw() const { return m_display.get(); }

    /// Whether the compositor offers `interface`, in `version` or a later one.
    bool offers(const wl_interface &interface, std::uint32_t version = 1) const;
    /// The first object that it offers under `interface`, spoken to in its version or in `version`
    /// if that is lower; null where there is none. `end` is called when the owner lets it go.
    template <class Proxy>
    Owned<Proxy> bind(const wl_interface &interface, std::uint32_t version, void (*end)(Proxy *))
    {
        return owned(static_cast<Proxy *>(bindAny(interface, version)), end);
    }
    /// The same for one object by its number.
    template <class Proxy>
    Owned<Proxy> bind(std::uint32_t number, const wl_interface &interface, std::uint32_t version,
                      void (*end)(Proxy *))
    {
        return owned(static_cast<Proxy *>(bindNumber(number, interface, version)), end);
    }
    /// The numbers of all objects offered under `interface`, in the compositor's order.
    std::vector<std::uint32_t> numbersOf(const wl_interface &interface) const;

    /// Sends what was requested. Called after every request that nothing else sends.
    void flush();
    /// Sends what was requested and waits until the compositor has answered all of it, serving its
    /// events; false when it has gone or `limit` has passed. For the start of the program alone.
    bool roundTrip(std::chrono::milliseconds limit = std::chrono::seconds(2));

Q_SIGNALS:
    /// The compositor offers one more object.
    void appeared(std::uint32_t number, const QByteArray &interface);
    /// It offers this one no longer; proxies of it do nothing any more.
    void disappeared(std::uint32_t number);
    /// The compositor has gone, or has ended the connection over an error of ours; nothing more
    /// will come. Proxies can still be let go.
    void closed();

private:
    struct Disconnect {
        void operator()(wl_display *display) const noexcept;
    };
    struct Offer {
        std::uint32_t number = 0;
        QByteArray interface;
        std::uint32_t version = 0;
    };

    explicit Connection(std::unique_ptr<wl_display, Disconnect> display);
    static const wl_registry_listener &registryListener();
    void *bindAny(const wl_interface &interface, std::uint32_t version);
    void *bindNumber(std::uint32_t number, const wl_interface &interface, std::uint32_t version);
    const Offer *offerOf(const wl_interface &interface) const;
    void process();
    bool readEvents();
    bool waitReadable(std::chrono::milliseconds limit);
    void close();

    std::unique_ptr<wl_display, Disconnect> m_display;
    Owned<wl_registry> m_registry;
    std::vector<Offer> m_offers;
    QSocketNotifier m_readable;
    QSocketNotifier m_writable;
    bool m_isClosed = false;
};

} // namespace lumacap::wayland
