#include "platform/wayland/toolkit/Toolkit.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

#include <qpa/qplatformnativeinterface.h>

namespace lumacap::wayland::toolkit {

// Qt 6.5 has a public way to ask; 6.4 has this one.

wl_display *display()
{
    return static_cast<wl_display *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_display"));
}

wl_surface *surfaceOf(QWindow &window)
{
    if (window.handle() == nullptr)
        return nullptr;
    return static_cast<wl_surface *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", &window));
}

wl_output *outputOf(QScreen &screen)
{
    return static_cast<wl_output *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForScreen("output", &screen));
}

QScreen *screenOf(const Output &output)
{
    const auto screens = QGuiApplication::screens();
    const auto found = std::ranges::find(screens, output.name, &QScreen::name);
    return found == screens.end() ? nullptr : *found;
}

} // namespace lumacap::wayland::toolkit
