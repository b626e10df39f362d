#include "platform/wayland/overlay/FullScreenOverlaySurface.h"

#include "platform/wayland/toolkit/Toolkit.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <wayland-client-core.h>

using namespace Qt::StringLiterals;

namespace lumacap::wayland {

bool FullScreenOverlaySurface::isOffered()
{
    return QGuiApplication::platformName().startsWith(u"wayland"_s);
}

FullScreenOverlaySurface::FullScreenOverlaySurface(const Outputs &outputs)
    : OutputOverlaySurface(outputs)
{
}

void FullScreenOverlaySurface::show(QWidget &widget, const Output &output, QScreen &screen)
{
    widget.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    widget.setScreen(&screen);
    widget.setGeometry(QRect(screen.geometry().topLeft(), output.frame.size()));
    widget.winId();
    widget.windowHandle()->setScreen(&screen);
    widget.showFullScreen();
    widget.activateWindow();
}

void FullScreenOverlaySurface::hide(QWidget &widget)
{
    widget.hide();
    wl_display_flush(toolkit::display());
}

} // namespace lumacap::wayland
