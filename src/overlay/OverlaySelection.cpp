#include "overlay/OverlayView.h"

#include "annotation/shapes/MagnifierAnnotation.h"
#include "overlay/AnnotationTextField.h"
#include "platform/DefaultsStore.h"
#include "preferences/storage/PreferencesStorage.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

/// Canvas points that a press may move by, in either direction, and still be a click.
constexpr double dragThreshold = 5;

/// A pointer's place is the upper left corner of its pixel. In the last column or row, beyond which
/// no pointer goes, it means the edge of the screen, which could not be reached otherwise.
Point<Canvas> atEdge(Point<Canvas> place, const CapturedScreen &screen)
{
    const double last = screen.pointerStep / screen.scale;
    const Size size = screen.bounds().size;
    return {place.x >= size.width - last ? std::max(place.x, size.width) : place.x,
            place.y <= last ? std::min(place.y, 0.0) : place.y};
}

} // namespace

void OverlayView::selectionDown(Point<Canvas> location)
{
    if (location != m_cursorPosition) // the toolkit drops motions that it finds late
        mouseMoved(location);
    m_showGuideLines = false;
    m_dragOrigin = m_screen.toGlobal(location);
    m_currentDragPoint = m_dragOrigin;
    m_isDragging = false;
    redisplay();
}

void OverlayView::selectionDragged(Point<Canvas> location)
{
    if (!m_dragOrigin)
        return redisplay(); // of the cross
    m_currentDragPoint = m_screen.toGlobal(location);
    const Point<Canvas> origin = m_screen.toCanvas(*m_dragOrigin);
    if (std::abs(location.x - origin.x) > dragThreshold
        || std::abs(location.y - origin.y) > dragThreshold) {
        m_isDragging = true;
        m_highlightedWindow.reset();
    }
    redisplay();
}

void OverlayView::selectionUp(Point<Canvas> location)
{
    // The release of a press that went elsewhere, to a menu that was open, is no click.
    if (!m_dragOrigin || !m_currentDragPoint)
        return;
    const bool isSelected = m_isDragging ? selectDraggedArea() : selectWindowAt(location);
    endSelectionGesture();
    const bool confirms = isSelected && m_preferences.defaults().boolean(u"autoConfirmSelection"_s);
    if (confirms) {
        if (const auto confirm = m_store.confirmCallback) // which may end this view
            confirm();
        return;
    }
    redisplay();
}

bool OverlayView::selectDraggedArea()
{
    const auto dragged = draggedRect();
    if (!dragged)
        return false;
    m_store.selectedViewRect = dragged;
    const auto window = windowAt(m_screen.toGlobal(dragged->center()));
    m_store.sourceAppName = window ? std::optional(window->ownerName) : std::nullopt;
    return true;
}

bool OverlayView::selectWindowAt(Point<Canvas> location)
{
    const auto window =
        m_highlightedWindow ? m_highlightedWindow : windowAt(m_screen.toGlobal(location));
    if (!window)
        return false;
    m_store.selectedViewRect = viewRect(*window);
    m_store.sourceAppName = window->ownerName;
    return true;
}

void OverlayView::endSelectionGesture()
{
    m_dragOrigin.reset();
    m_currentDragPoint.reset();
    m_isDragging = false;
    m_highlightedWindow.reset();
}

std::optional<Rect<Canvas>> OverlayView::draggedRect() const
{
    if (!isSelecting() || !m_isDragging || !m_dragOrigin || !m_currentDragPoint)
        return std::nullopt;
    const Point<Canvas> from = atEdge(m_screen.toCanvas(*m_dragOrigin), m_screen);
    const Point<Canvas> to = atEdge(m_screen.toCanvas(*m_currentDragPoint), m_screen);
    return Rect<Canvas>{from, to - from}.standardized();
}

std::optional<Rect<Canvas>> OverlayView::selectionRectForDisplay() const
{
    if (const auto dragged = draggedRect())
        return dragged;
    if (m_store.selectedViewRect)
        return m_store.selectedViewRect;
    if (isSelecting() && m_highlightedWindow)
        return viewRect(*m_highlightedWindow);
    return std::nullopt;
}

std::optional<DetectedWindow> OverlayView::windowAt(Point<Global> point) const
{
    return m_windowDetector.windowAtPoint(toTopLeftGlobal(point, m_screen.firstScreenHeight),
                                          m_myPID);
}

Rect<Global> OverlayView::fromQuartzRect(const Rect<TopLeftGlobal> &rect) const
{
    return toGlobal(rect, m_screen.firstScreenHeight);
}

Rect<Canvas> OverlayView::viewRect(const DetectedWindow &window) const
{
    return m_screen.toCanvas(fromQuartzRect(window.frame));
}

} // namespace lumacap
