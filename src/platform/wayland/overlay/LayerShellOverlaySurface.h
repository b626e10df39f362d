#pragma once

#include "platform/wayland/Owned.h"
#include "platform/wayland/overlay/OutputOverlaySurface.h"

#include <QTimer>

#include <cstdint>

struct wl_registry;
struct wl_registry_listener;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;
struct zwlr_layer_surface_v1_listener;

namespace lumacap::wayland {

class Connection;

/// Widgets as surfaces of the layer shell: above panels and full-screen windows, with the keyboard.
/// The widget's surface is the toolkit's own, so that the toolkit draws on it and gives it its
/// input. Such a surface can have no pop-ups.
class LayerShellOverlaySurface final : public OutputOverlaySurface {
public:
    /// Whether the compositor has a layer shell, and the toolkit shows its windows there.
    static bool isOffered(const Connection &connection);

    /// Borrows `outputs`, which outlive the object. Session::prepareToolkit was called.
    explicit LayerShellOverlaySurface(const Outputs &outputs);
    Q_DISABLE_COPY_MOVE(LayerShellOverlaySurface)
    ~LayerShellOverlaySurface() override;

protected:
    void show(QWidget &widget, const Output &output, QScreen &screen) override;
    void hide(QWidget &widget) override;

private:
    static const wl_registry_listener &registryListener();
    static const zwlr_layer_surface_v1_listener &layerListener();
    void bindShell(std::uint32_t number, std::uint32_t version);
    void giveRole();
    void configure(std::uint32_t serial, QSize size);

    Owned<wl_registry> m_registry;
    Owned<zwlr_layer_shell_v1> m_shell;
    QPointer<QWidget> m_widget;
    QPointer<QScreen> m_screen;
    Owned<zwlr_layer_surface_v1> m_layer;
    QTimer m_unanswered;
};

} // namespace lumacap::wayland
