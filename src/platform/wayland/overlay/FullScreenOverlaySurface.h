#pragma once

#include "platform/wayland/overlay/OutputOverlaySurface.h"

namespace lumacap::wayland {

/// Widgets as full-screen windows, as every compositor has them. It gives such a window the
/// keyboard as it does any new one.
class FullScreenOverlaySurface final : public OutputOverlaySurface {
public:
    /// Whether the toolkit shows its windows on a Wayland compositor.
    static bool isOffered();

    /// Borrows `outputs`, which outlive the object.
    explicit FullScreenOverlaySurface(const Outputs &outputs);

protected:
    void show(QWidget &widget, const Output &output, QScreen &screen) override;
    void hide(QWidget &widget) override;
};

} // namespace lumacap::wayland
