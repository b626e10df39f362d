#include "annotation/shapes/FreehandAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace lumacap {
namespace {

using Way = std::span<const Point<Canvas>>;

/// The way in short pieces, each beginning where the one before ended: filling one outline that
/// crosses itself takes a painter far longer than filling its pieces, and with round ends, in
/// opaque colours, both look the same.
std::vector<Way> piecesOf(Way way)
{
    constexpr std::size_t mostSegments = 32;
    constexpr double longest = 400; // canvas points
    std::vector<Way> pieces;
    std::size_t first = 0;
    double length = 0;
    for (std::size_t last = 1; last < way.size(); ++last) {
        if (last - first > mostSegments || length > longest) {
            pieces.push_back(way.subspan(first, last - first));
            first = last - 1;
            length = 0;
        }
        const Size step = way[last] - way[last - 1];
        length += std::hypot(step.width, step.height);
    }
    pieces.push_back(way.subspan(first));
    return pieces;
}

QRectF boxOf(Way piece, double reach)
{
    const auto [left, right] = std::ranges::minmax(piece, {}, &Point<Canvas>::x);
    const auto [bottom, top] = std::ranges::minmax(piece, {}, &Point<Canvas>::y);
    return toQRectF(areaBetween({left.x, bottom.y}, {right.x, top.y}, reach));
}

QPainterPath pathOf(Way piece)
{
    QPainterPath path(toQPointF(piece.front()));
    for (const Point<Canvas> point : piece.subspan(1))
        path.lineTo(toQPointF(point));
    return path;
}

} // namespace

FreehandAnnotation::FreehandAnnotation(const QColor &strokeColor, double strokeWidth,
                                       std::vector<Point<Canvas>> way)
    : Annotation(strokeColor, strokeWidth)
    , points(std::move(way))
{
}

void FreehandAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    if (!isShown())
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    const QPen pen(color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    const QRectF visible = visiblePixels(context);
    const QTransform toPixels = context.deviceTransform();
    for (const Way piece : piecesOf(points)) {
        if (visible.intersects(toPixels.mapRect(boxOf(piece, lineWidth))))
            strokeLine(context, pathOf(piece), pen);
    }
}

DrawnAreas FreehandAnnotation::drawnAreas() const
{
    return isShown() ? areasAlong(points, lineWidth / 2) : DrawnAreas();
}

DrawnAreas FreehandAnnotation::dragTo(Point<Canvas> point)
{
    points.push_back(point);
    if (!isShown())
        return {};
    // What was drawn before stays, but for the end that is now a bend.
    return areasAlong(std::span(points).last(2), lineWidth / 2);
}

bool FreehandAnnotation::isShown() const
{
    const auto isNumber = [](Point<Canvas> point) { return isFinite(point); };
    return points.size() >= 2 && std::ranges::all_of(points, isNumber) && hasStroke();
}

} // namespace lumacap
