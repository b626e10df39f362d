#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

struct wl_display;
struct wl_interface;
struct wl_registry;

namespace lumacap::harness {

/// A test's own connection to a Wayland compositor, used in plain turns: ask, and wait.
class Compositor {
public:
    /// Whether a compositor takes connections at `socket` (a path). One that starts has the file a
    /// little before it does.
    static bool answers(const QString &socket);

    /// Connects to the compositor's `socket` (a path); throws when nobody answers.
    explicit Compositor(const QString &socket);
    Q_DISABLE_COPY_MOVE(Compositor)
    ~Compositor();

    wl_display *raw() const { return m_display; }
    /// A proxy of the first object that it offers under `interface`; null where there is none.
    template <class Proxy>
    Proxy *bind(const wl_interface &interface, std::uint32_t version = 1)
    {
        return static_cast<Proxy *>(bindAny(interface, version));
    }
    /// Waits until all that was asked is done; throws when the compositor has gone.
    void finish() const;

private:
    void *bindAny(const wl_interface &interface, std::uint32_t version);

    wl_display *m_display = nullptr;
    wl_registry *m_registry = nullptr;
    std::map<QByteArray, std::pair<std::uint32_t, std::uint32_t>> m_offers; // number and version
};

} // namespace lumacap::harness
