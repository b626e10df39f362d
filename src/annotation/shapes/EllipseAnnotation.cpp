#include "annotation/shapes/EllipseAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <cmath>
#include <numbers>

namespace lumacap {
namespace {

namespace look {
/// Of which none turns back: the box around the ends of an arc holds all of it.
constexpr int arcs = 4 * 16;
} // namespace look

} // namespace

EllipseAnnotation::EllipseAnnotation(const QColor &strokeColor, double strokeWidth,
                                     const Rect<Canvas> &rect)
    : Annotation(strokeColor, strokeWidth)
    , origin(rect.origin)
    , size(rect.size)
{
}

void EllipseAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !hasStroke())
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    context.setPen(outlinePen(color, lineWidth));
    context.setBrush(Qt::NoBrush);
    context.drawEllipse(toQRectF(rect));
}

DrawnAreas EllipseAnnotation::drawnAreas() const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !hasStroke())
        return {};
    const auto pointAt = [&](int arc) -> Point<Canvas> {
        const double angle = 2 * std::numbers::pi * arc / look::arcs;
        return {rect.midX() + rect.width() / 2 * std::cos(angle),
                rect.midY() + rect.height() / 2 * std::sin(angle)};
    };
    DrawnAreas areas;
    areas.reserve(look::arcs);
    for (int arc = 0; arc < look::arcs; ++arc)
        areas.push_back(areaBetween(pointAt(arc), pointAt(arc + 1), lineWidth / 2));
    return areas;
}

} // namespace lumacap
