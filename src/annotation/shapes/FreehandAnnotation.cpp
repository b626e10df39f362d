#include "annotation/shapes/FreehandAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace lumacap {

FreehandAnnotation::FreehandAnnotation(const QColor &strokeColor, double strokeWidth,
                                       std::vector<Point<Canvas>> way)
    : Annotation(strokeColor, strokeWidth)
    , points(std::move(way))
{
}

void FreehandAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    const auto isNumber = [](Point<Canvas> point) { return isFinite(point); };
    if (points.size() < 2 || !std::ranges::all_of(points, isNumber))
        return;
    QPainterPath way(toQPointF(points.front()));
    for (const Point<Canvas> point : points | std::views::drop(1))
        way.lineTo(toQPointF(point));

    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    strokeLine(context, way, QPen(color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace lumacap
