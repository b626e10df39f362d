#include "platform/wayland/overlay/LayerShellOverlaySurface.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/toolkit/Toolkit.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cstring>

#include <protocols/wlr-layer-shell-unstable-v1.h>
#include <wayland-client-core.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

constexpr std::uint32_t shellVersion = 4;
constexpr std::int32_t underNobody = -1; // panels don't push it aside
constexpr auto answerLimit = 5s;

LayerShellOverlaySurface &self(void *data)
{
    return *static_cast<LayerShellOverlaySurface *>(data);
}

void endShell(zwlr_layer_shell_v1 *shell)
{
    if (zwlr_layer_shell_v1_get_version(shell) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(shell);
    else // there is no such request: it just goes on our side
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(shell));
}

} // namespace

bool LayerShellOverlaySurface::isOffered(const Connection &connection)
{
    return connection.offers(zwlr_layer_shell_v1_interface)
        && QGuiApplication::platformName().startsWith(u"wayland"_s);
}

LayerShellOverlaySurface::LayerShellOverlaySurface(const Outputs &outputs)
    : OutputOverlaySurface(outputs)
    , m_registry(owned(wl_display_get_registry(toolkit::display()), &wl_registry_destroy))
{
    // The shell has to be one of the toolkit's connection, as the surfaces are. It comes when the
    // toolkit next serves its events.
    wl_registry_add_listener(m_registry.get(), &registryListener(), this);
    wl_display_flush(toolkit::display());
    m_unanswered.setSingleShot(true);
    m_unanswered.setInterval(answerLimit);
    connect(&m_unanswered, &QTimer::timeout, this, [this] { tellScreenChanged(); });
}

LayerShellOverlaySurface::~LayerShellOverlaySurface() = default;

const wl_registry_listener &LayerShellOverlaySurface::registryListener()
{
    static constexpr wl_registry_listener listener{
        .global =
            [](void *data, wl_registry * /*registry*/, std::uint32_t number, const char *interface,
               std::uint32_t version) {
                if (std::strcmp(interface, zwlr_layer_shell_v1_interface.name) == 0)
                    self(data).bindShell(number, version);
            },
        .global_remove = [](void * /*data*/, wl_registry * /*registry*/,
                            std::uint32_t /*number*/) {},
    };
    return listener;
}

void LayerShellOverlaySurface::bindShell(std::uint32_t number, std::uint32_t version)
{
    auto *const shell = static_cast<zwlr_layer_shell_v1 *>(wl_registry_bind(
        m_registry.get(), number, &zwlr_layer_shell_v1_interface, std::min(version, shellVersion)));
    m_shell = owned(shell, &endShell);
    m_registry.reset(); // nothing else is wanted of it
    if (m_widget)
        giveRole();
}

void LayerShellOverlaySurface::show(QWidget &widget, const Output &output, QScreen &screen)
{
    // Together with a variable in the environment this keeps the toolkit from giving the surface a
    // role of its own.
    widget.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    widget.setScreen(&screen);
    widget.setGeometry(QRect(screen.geometry().topLeft(), output.frame.size()));
    widget.winId(); // makes the surface, and shows nothing
    QWindow &window = *widget.windowHandle();
    if (toolkit::surfaceOf(window) == nullptr) { // it has covered before
        window.destroy();
        window.create();
    }
    window.setScreen(&screen);
    m_widget = &widget;
    m_screen = &screen;
    m_unanswered.start();
    if (m_shell != nullptr)
        giveRole();
}

void LayerShellOverlaySurface::giveRole()
{
    wl_surface *const surface = toolkit::surfaceOf(*m_widget->windowHandle());
    if (surface == nullptr || !m_screen)
        return tellScreenChanged();
    constexpr std::uint32_t everyEdge = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP
        | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT
        | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
    m_layer = owned(
        zwlr_layer_shell_v1_get_layer_surface(m_shell.get(), surface, toolkit::outputOf(*m_screen),
                                              ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "lumacap"),
        &zwlr_layer_surface_v1_destroy);
    auto *const layer = m_layer.get();
    zwlr_layer_surface_v1_add_listener(layer, &layerListener(), this);
    zwlr_layer_surface_v1_set_anchor(layer, everyEdge);
    zwlr_layer_surface_v1_set_exclusive_zone(layer, underNobody);
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        layer, ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE);
    wl_surface_commit(surface);
    wl_display_flush(toolkit::display());
}

const zwlr_layer_surface_v1_listener &LayerShellOverlaySurface::layerListener()
{
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void *data, zwlr_layer_surface_v1 * /*layer*/, std::uint32_t serial,
               std::uint32_t width, std::uint32_t height) {
                self(data).configure(serial, {static_cast<int>(width), static_cast<int>(height)});
            },
        .closed = [](void *data,
                     zwlr_layer_surface_v1 * /*layer*/) { self(data).tellScreenChanged(); },
    };
    return listener;
}

void LayerShellOverlaySurface::configure(std::uint32_t serial, QSize size)
{
    m_unanswered.stop();
    zwlr_layer_surface_v1_ack_configure(m_layer.get(), serial);
    if (!size.isEmpty()) // else it is for us to choose
        m_widget->resize(size);
    m_widget->show(); // not before: what is drawn on a surface without a size is an error
}

void LayerShellOverlaySurface::hide(QWidget &widget)
{
    m_unanswered.stop();
    m_widget.clear();
    m_layer.reset(); // before its surface
    widget.hide();
    wl_display_flush(toolkit::display());
}

} // namespace lumacap::wayland
