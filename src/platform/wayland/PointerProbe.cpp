#include "platform/wayland/PointerProbe.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Outputs.h"
#include "platform/wayland/Seat.h"

#include <algorithm>
#include <utility>

#include <protocols/viewporter.h>
#include <protocols/wlr-layer-shell-unstable-v1.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

namespace lumacap::wayland {

namespace {

constexpr std::uint32_t compositorVersion = 4;
constexpr std::uint32_t shellVersion = 3; // the first that is let go
constexpr std::uint32_t everySide = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP
    | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT
    | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
constexpr int pixelSize = 4;

void endShell(zwlr_layer_shell_v1 *shell)
{
    if (zwlr_layer_shell_v1_get_version(shell) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(shell);
    else
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(shell));
}

/// One transparent pixel; null where the system gives no memory.
Owned<wl_buffer> transparentPixel(wl_shm *memory)
{
    const int descriptor = memfd_create("lumacap-nothing", MFD_CLOEXEC);
    wl_buffer *buffer = nullptr;
    if (descriptor >= 0 && ftruncate(descriptor, pixelSize) == 0) {
        const auto pool =
            owned(wl_shm_create_pool(memory, descriptor, pixelSize), &wl_shm_pool_destroy);
        buffer = wl_shm_pool_create_buffer(pool.get(), 0, 1, 1, pixelSize, WL_SHM_FORMAT_ARGB8888);
    }
    if (descriptor >= 0)
        close(descriptor);
    return owned(buffer, &wl_buffer_destroy);
}

PointerProbe &self(void *data)
{
    return *static_cast<PointerProbe *>(data);
}

} // namespace

/// An invisible surface over one output.
class PointerProbe::Cover {
public:
    Cover(PointerProbe &probe, const Output &output)
        : m_probe(probe)
        , m_frame(output.frame)
        , m_surface(
              owned(wl_compositor_create_surface(probe.m_compositor.get()), &wl_surface_destroy))
        , m_viewport(owned(wp_viewporter_get_viewport(probe.m_viewporter.get(), m_surface.get()),
                           &wp_viewport_destroy))
        , m_layer(owned(zwlr_layer_shell_v1_get_layer_surface(
                            probe.m_shell.get(), m_surface.get(), output.proxy,
                            ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "lumacap-probe"),
                        &zwlr_layer_surface_v1_destroy))
    {
        zwlr_layer_surface_v1_add_listener(m_layer.get(), &layerListener(), this);
        zwlr_layer_surface_v1_set_anchor(m_layer.get(), everySide);
        zwlr_layer_surface_v1_set_exclusive_zone(m_layer.get(), -1); // over panels, too
        wl_surface_commit(m_surface.get());
    }

    wl_surface *surface() const { return m_surface.get(); }
    QRect frame() const { return m_frame; }

private:
    static const zwlr_layer_surface_v1_listener &layerListener();

    void show(std::uint32_t serial, int width, int height)
    {
        zwlr_layer_surface_v1_ack_configure(m_layer.get(), serial);
        wp_viewport_set_destination(m_viewport.get(), std::max(1, width), std::max(1, height));
        wl_surface_attach(m_surface.get(), m_probe.m_nothing.get(), 0, 0);
        wl_surface_commit(m_surface.get());
    }

    PointerProbe &m_probe;
    QRect m_frame;
    Owned<wl_surface> m_surface;
    Owned<wp_viewport> m_viewport;
    Owned<zwlr_layer_surface_v1> m_layer; // ends before its surface
};

const zwlr_layer_surface_v1_listener &PointerProbe::Cover::layerListener()
{
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void *data, zwlr_layer_surface_v1 * /*layer*/, std::uint32_t serial,
               std::uint32_t width, std::uint32_t height) {
                static_cast<Cover *>(data)->show(serial, static_cast<int>(width),
                                                 static_cast<int>(height));
            },
        .closed = [](void * /*data*/, zwlr_layer_surface_v1 * /*layer*/) {},
    };
    return listener;
}

PointerProbe::PointerProbe(Connection &connection, const Outputs &outputs)
    : m_connection(connection)
    , m_outputs(outputs)
    , m_compositor(
          connection.bind(wl_compositor_interface, compositorVersion, &wl_compositor_destroy))
    , m_memory(connection.bind(wl_shm_interface, 1, &wl_shm_destroy))
    , m_viewporter(connection.bind(wp_viewporter_interface, 1, &wp_viewporter_destroy))
    , m_shell(connection.bind(zwlr_layer_shell_v1_interface, shellVersion, &endShell))
    , m_seat(connection.bind(wl_seat_interface, seatVersion, &endSeat))
{
    if (m_seat != nullptr)
        wl_seat_add_listener(m_seat.get(), &seatListener(), this);
    connection.flush();
}

PointerProbe::~PointerProbe()
{
    m_covers.clear();
    m_pointer.reset();
    m_seat.reset();
    m_connection.flush(); // so that nothing stays on the screen until something else is sent
}

const wl_seat_listener &PointerProbe::seatListener()
{
    static constexpr wl_seat_listener listener{
        .capabilities =
            [](void *data, wl_seat * /*seat*/, std::uint32_t capabilities) {
                self(data).followPointer((capabilities & WL_SEAT_CAPABILITY_POINTER) != 0);
            },
        .name = [](void * /*data*/, wl_seat * /*seat*/, const char * /*name*/) {},
    };
    return listener;
}

const wl_pointer_listener &PointerProbe::pointerListener()
{
    // By name, for later versions of the library have more of them, which this seat does not send.
    static const wl_pointer_listener listener = [] {
        wl_pointer_listener events{};
        events.enter = [](void *data, wl_pointer * /*pointer*/, std::uint32_t /*serial*/,
                          wl_surface *surface, wl_fixed_t x, wl_fixed_t y) {
            self(data).enter(surface, {wl_fixed_to_double(x), wl_fixed_to_double(y)});
        };
        events.leave = [](void *, wl_pointer *, std::uint32_t, wl_surface *) { };
        events.motion = [](void *, wl_pointer *, std::uint32_t, wl_fixed_t, wl_fixed_t) { };
        events.button = [](void *, wl_pointer *, std::uint32_t, std::uint32_t, std::uint32_t,
                           std::uint32_t) { };
        events.axis = [](void *, wl_pointer *, std::uint32_t, std::uint32_t, wl_fixed_t) { };
        events.frame = [](void *, wl_pointer *) { };
        events.axis_source = [](void *, wl_pointer *, std::uint32_t) { };
        events.axis_stop = [](void *, wl_pointer *, std::uint32_t, std::uint32_t) { };
        events.axis_discrete = [](void *, wl_pointer *, std::uint32_t, std::int32_t) { };
        return events;
    }();
    return listener;
}

void PointerProbe::followPointer(bool hasOne)
{
    if (m_pointer != nullptr)
        return;
    if (!hasOne || m_compositor == nullptr || m_memory == nullptr || m_viewporter == nullptr
        || m_shell == nullptr) {
        Q_EMIT finished(std::nullopt);
        return;
    }
    m_pointer = owned(wl_seat_get_pointer(m_seat.get()), &endPointer);
    wl_pointer_add_listener(m_pointer.get(), &pointerListener(), this);
    cover();
}

void PointerProbe::cover()
{
    m_nothing = transparentPixel(m_memory.get());
    if (m_nothing == nullptr)
        return;
    // Those of now: one may have gone since the seat was asked.
    for (const Output &output : m_outputs.all())
        m_covers.push_back(std::make_unique<Cover>(*this, output));
    m_connection.flush();
}

void PointerProbe::enter(wl_surface *surface, QPointF place)
{
    const auto entered = std::ranges::find(
        m_covers, surface, [](const auto &covering) { return covering->surface(); });
    if (entered != m_covers.end())
        Q_EMIT finished(QPointF((*entered)->frame().topLeft()) + place);
}

} // namespace lumacap::wayland
