#include "overlay/OverlayToolbar.h"

#include "annotation/shapes/FrozenCrop.h"
#include "annotation/toolbar/AnnotationToolbarView.h"
#include "overlay/OverlayView.h"

#include <QEvent>

#include <algorithm>
#include <utility>

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr double sideMargins = 40; // of both sides
constexpr double topMargin = 60;
} // namespace look

} // namespace

double toolbarWidth(double width)
{
    return width - look::sideMargins;
}

Rect<Canvas> toolbarFrame(Size canvas, Size fitting)
{
    const double width = std::min(canvas.width, fitting.width);
    const double below = canvas.height - fitting.height;
    // On a screen too low for its margin it keeps to the screen, and shows its first rows at least.
    const double y = below >= look::topMargin ? below - look::topMargin : std::min(below, 0.0);
    return {{(canvas.width - width) * 0.5, y}, {width, fitting.height}};
}

OverlayToolbar::OverlayToolbar(AnnotationStore &store, OverlayView &view, QImage frozenImage)
    : QObject(&view)
    , m_view(view)
    , m_frozenImage(std::move(frozenImage))
    , m_toolbar(new AnnotationToolbarView(store, &view))
{
    connect(m_toolbar, &AnnotationToolbarView::fittingSizeDidChange, this, &OverlayToolbar::place);
    view.installEventFilter(this);
    place();
    m_toolbar->show();
}

bool OverlayToolbar::eventFilter(QObject *watched, QEvent *event)
{
    // Also where the toolkit finds the screen's density only when the window is there.
    if (event->type() == QEvent::Resize || event->type() == QEvent::ScreenChangeInternal)
        place();
    return QObject::eventFilter(watched, event);
}

void OverlayToolbar::place()
{
    const CanvasMeasure &canvas = m_view.canvas();
    if (m_toolbar->unitsAPoint() != m_view.unitsAPoint())
        m_toolbar->setUnitsAPoint(m_view.unitsAPoint());
    Size fitting = m_toolbar->fittingSize(toolbarWidth(canvas.size.width));
    if (fitting.height > canvas.size.height) // fewer rows
        fitting = m_toolbar->fittingSize(canvas.size.width);
    const Rect<Canvas> frame = toolbarFrame(canvas.size, fitting);
    m_view.setToolbarFrame(*m_toolbar, frame);
    m_toolbar->setBackdrop(cropUnder(frame, m_frozenImage, canvas.scale));
}

} // namespace lumacap
