#include "platform/wayland/overlay/OutputOverlaySurface.h"

#include "platform/wayland/Outputs.h"
#include "platform/wayland/toolkit/Toolkit.h"

#include <QEvent>
#include <QPlatformSurfaceEvent>
#include <QScreen>
#include <QWindow>

#include <utility>

namespace lumacap::wayland {

OutputOverlaySurface::OutputOverlaySurface(const Outputs &outputs)
    : m_outputs(outputs)
{
    connect(&outputs, &Outputs::changed, this, [this] {
        if (m_widget && !isUnchanged())
            tellScreenChanged();
    });
}

OutputOverlaySurface::~OutputOverlaySurface() = default;

void OutputOverlaySurface::cover(QWidget &widget, const Screen &screen,
                                 std::function<void()> onScreenChanged)
{
    end();
    ++m_coverings;
    m_widget = &widget;
    m_screen = screen;
    m_onScreenChanged = std::move(onScreenChanged);
    const auto output = outputOf(screen, m_outputs.all());
    QScreen *const toolkitScreen = output ? toolkit::screenOf(*output) : nullptr;
    if (!output || toolkitScreen == nullptr) {
        tellScreenChanged();
        return;
    }
    show(widget, *output, *toolkitScreen);
    m_window = widget.windowHandle();
    m_window->installEventFilter(this);
}

bool OutputOverlaySurface::isUnchanged() const
{
    return outputOf(m_screen, m_outputs.all()).has_value();
}

bool OutputOverlaySurface::eventFilter(QObject *watched, QEvent *event)
{
    const bool isWindowGoing = event->type() == QEvent::PlatformSurface
        && static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType()
            == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed;
    if (isWindowGoing)
        end();
    else if (event->type() == QEvent::Close) // by the compositor, on the person's behalf
        tellScreenChanged();
    return QObject::eventFilter(watched, event);
}

void OutputOverlaySurface::uncover(QWidget &widget)
{
    if (m_widget == &widget)
        end();
}

void OutputOverlaySurface::end()
{
    m_onScreenChanged = nullptr;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window.clear();
    if (m_widget) {
        QWidget &widget = *m_widget;
        m_widget.clear(); // to hide it may end here again
        hide(widget);
    }
}

void OutputOverlaySurface::tellScreenChanged()
{
    QMetaObject::invokeMethod(
        this,
        [this, covering = m_coverings] {
            if (covering == m_coverings && m_onScreenChanged)
                std::exchange(m_onScreenChanged, nullptr)();
        },
        Qt::QueuedConnection);
}

} // namespace lumacap::wayland
