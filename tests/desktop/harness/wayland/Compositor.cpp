#include "harness/wayland/Compositor.h"

#include <algorithm>
#include <stdexcept>

#include <wayland-client.h>

namespace lumacap::harness {

bool Compositor::answers(const QString &socket)
{
    wl_display *const display = wl_display_connect(socket.toLocal8Bit().constData());
    if (display != nullptr)
        wl_display_disconnect(display);
    return display != nullptr;
}

Compositor::Compositor(const QString &socket)
    : m_display(wl_display_connect(socket.toLocal8Bit().constData()))
{
    if (m_display == nullptr)
        throw std::runtime_error("no compositor at " + socket.toStdString());
    m_registry = wl_display_get_registry(m_display);
    static constexpr wl_registry_listener listener{
        .global =
            [](void *self, wl_registry * /*registry*/, std::uint32_t number, const char *interface,
               std::uint32_t version) {
                static_cast<Compositor *>(self)->m_offers.try_emplace(interface, number, version);
            },
        .global_remove = [](void * /*self*/, wl_registry * /*registry*/,
                            std::uint32_t /*number*/) {},
    };
    wl_registry_add_listener(m_registry, &listener, this);
    finish();
}

Compositor::~Compositor()
{
    wl_registry_destroy(m_registry);
    wl_display_disconnect(m_display);
}

void *Compositor::bindAny(const wl_interface &interface, std::uint32_t version)
{
    const auto offer = m_offers.find(interface.name);
    if (offer == m_offers.end())
        return nullptr;
    const auto [number, offered] = offer->second;
    return wl_registry_bind(m_registry, number, &interface, std::min(version, offered));
}

void Compositor::finish() const
{
    if (wl_display_roundtrip(m_display) < 0)
        throw std::runtime_error("the compositor has gone");
}

} // namespace lumacap::harness
