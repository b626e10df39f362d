#include "overlay/OverlayView.h"

#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "graphics/Fatal.h"

#include <limits>
#include <utility>

namespace lumacap {
namespace {

/// Canvas points that the source of a loupe has to exceed on both sides.
constexpr double leastSource = 4;

/// The mark that a press of `tool` begins; nothing for tools that need no drag.
std::unique_ptr<Annotation> begunBy(AnnotationTool tool, Point<Canvas> at,
                                    const AnnotationStore &store)
{
    const QColor color = nsColor(store.currentColor());
    const double lineWidth = rowOf(lineThicknesses, store.currentThickness()).rawValue;
    const Rect<Canvas> nothing{at, {0, 0}};
    switch (tool) {
    case AnnotationTool::Arrow:
        return std::make_unique<ArrowAnnotation>(color, lineWidth, at, at);
    case AnnotationTool::Rectangle:
        return std::make_unique<RectAnnotation>(color, lineWidth, nothing);
    case AnnotationTool::Ellipse:
        return std::make_unique<EllipseAnnotation>(color, lineWidth, nothing);
    case AnnotationTool::Freehand:
        return std::make_unique<FreehandAnnotation>(color, lineWidth, std::vector{at});
    case AnnotationTool::Magnifier:
        return std::make_unique<MagnifierAnnotation>(
            color, lineWidth, nothing, rowOf(magnifierZooms, store.magnifierZoom()).rawValue,
            store.magnifierShape());
    case AnnotationTool::Blur:
        return std::make_unique<BlurAnnotation>(color, lineWidth, nothing);
    case AnnotationTool::Selection:
    case AnnotationTool::NumberedPoint:
    case AnnotationTool::Text:
        break;
    }
    return nullptr;
}

} // namespace

void OverlayView::useTool(AnnotationTool tool)
{
    if (tool != AnnotationTool::Magnifier && m_magnifierPhase == MagnifierPhase::PositioningLoupe
        && loupeInProgress() != nullptr) {
        endPlacing();
        addInProgress();
    }
    if (tool != AnnotationTool::Selection) {
        endSelectionGesture();
        m_showGuideLines = false;
    }
    redisplay();
}

void OverlayView::editingDown(Point<Canvas> location)
{
    const AnnotationTool tool = m_store.currentTool();
    if (tool == AnnotationTool::NumberedPoint)
        addNumberedPoint(location);
    else if (tool == AnnotationTool::Text)
        beginTextEditing(location);
    else if (tool == AnnotationTool::Magnifier)
        magnifierDown(location);
    else
        begin(begunBy(tool, location, m_store));
    redisplay();
}

void OverlayView::editingDragged(Point<Canvas> location)
{
    if (auto *const loupe = loupeInProgress())
        magnifierDragged(*loupe, location);
    else if (m_inProgressAnnotation)
        inProgressChanged(m_inProgressAnnotation->dragTo(location));
    redisplay();
}

void OverlayView::editingUp()
{
    if (auto *const loupe = loupeInProgress())
        magnifierUp(*loupe);
    else if (m_inProgressAnnotation)
        addInProgress();
    redisplay();
}

void OverlayView::begin(std::unique_ptr<Annotation> annotation)
{
    m_inProgressAnnotation = std::move(annotation);
    m_drawnInProgress = {.annotation = m_inProgressAnnotation.get(),
                         .id = m_inProgressAnnotation->id(),
                         .pixels = drawnPixels(m_inProgressAnnotation->drawnAreas(), m_canvas),
                         .revision = 0,
                         .lastChange = {}};
}

void OverlayView::inProgressChanged(const DrawnAreas &where)
{
    if (!m_drawnInProgress || !m_inProgressAnnotation)
        return;
    m_drawnInProgress->pixels = drawnPixels(m_inProgressAnnotation->drawnAreas(), m_canvas);
    m_drawnInProgress->lastChange = drawnPixels(where, m_canvas);
    ++m_drawnInProgress->revision;
}

void OverlayView::dropInProgress()
{
    m_drawnInProgress.reset();
    m_inProgressAnnotation.reset();
}

void OverlayView::addInProgress()
{
    m_drawnInProgress.reset(); // or it would be drawn twice at the store's call for a redraw
    m_store.add(std::move(m_inProgressAnnotation));
}

void OverlayView::addNumberedPoint(Point<Canvas> location)
{
    if (m_store.numberCounter == std::numeric_limits<int>::max())
        fatal("more numbered points than there are numbers");
    ++m_store.numberCounter;
    m_store.add(std::make_unique<NumberedPointAnnotation>(nsColor(m_store.currentColor()), location,
                                                          m_store.numberCounter));
}

MagnifierAnnotation *OverlayView::loupeInProgress() const
{
    return dynamic_cast<MagnifierAnnotation *>(m_inProgressAnnotation.get());
}

void OverlayView::magnifierDown(Point<Canvas> location)
{
    const auto *const loupe = loupeInProgress();
    if (m_magnifierPhase != MagnifierPhase::PositioningLoupe || loupe == nullptr) {
        m_magnifierPhase = MagnifierPhase::DraggingSource;
        begin(begunBy(AnnotationTool::Magnifier, location, m_store));
    } else if (loupe->loupe().contains(location)) {
        m_magnifierDragOffset = location - loupe->loupeOrigin;
    } else {
        endPlacing();
        addInProgress();
    }
}

void OverlayView::magnifierDragged(MagnifierAnnotation &loupe, Point<Canvas> location)
{
    if (m_magnifierPhase == MagnifierPhase::DraggingSource) {
        inProgressChanged(loupe.dragTo(location));
    } else if (m_magnifierPhase == MagnifierPhase::PositioningLoupe && m_magnifierDragOffset) {
        const DrawnAreas before = loupe.drawnAreas();
        loupe.loupeOrigin = location - *m_magnifierDragOffset;
        inProgressChanged(joined(before, loupe.drawnAreas()));
    }
}

void OverlayView::magnifierUp(MagnifierAnnotation &loupe)
{
    if (m_magnifierPhase == MagnifierPhase::PositioningLoupe)
        m_magnifierDragOffset.reset();
    if (m_magnifierPhase != MagnifierPhase::DraggingSource)
        return;
    const Rect<Canvas> source = loupe.source();
    if (source.width() <= leastSource || source.height() <= leastSource) {
        endPlacing();
        dropInProgress();
        return;
    }
    const DrawnAreas before = loupe.drawnAreas();
    loupe.autoPlaceLoupe({{0, 0}, m_canvas.size});
    inProgressChanged(joined(before, loupe.drawnAreas()));
    m_magnifierPhase = MagnifierPhase::PositioningLoupe;
    m_magnifierDragOffset.reset();
    useTool(m_store.currentTool()); // another one may have been chosen by keyboard meanwhile
}

void OverlayView::endPlacing()
{
    m_magnifierPhase = MagnifierPhase::Idle;
    m_magnifierDragOffset.reset();
}

} // namespace lumacap
