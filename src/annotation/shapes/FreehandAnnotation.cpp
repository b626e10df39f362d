#include "annotation/shapes/FreehandAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <span>
#include <utility>

namespace lumacap {
namespace {

/// The way in short pieces, each beginning where the one before ended: filling one outline that
/// crosses itself takes a painter far longer than filling its pieces, and with round ends, in
/// opaque colours, both look the same.
std::vector<QPainterPath> piecesOf(const std::vector<Point<Canvas>> &way)
{
    constexpr int mostSegments = 32;
    constexpr double longest = 400; // canvas points
    std::vector<QPainterPath> pieces{QPainterPath(toQPointF(way.front()))};
    int segments = 0;
    double length = 0;
    Point<Canvas> last = way.front();
    for (const Point<Canvas> point : way | std::views::drop(1)) {
        if (segments == mostSegments || length > longest) {
            pieces.emplace_back(toQPointF(last));
            segments = 0;
            length = 0;
        }
        pieces.back().lineTo(toQPointF(point));
        ++segments;
        length += std::hypot(point.x - last.x, point.y - last.y);
        last = point;
    }
    return pieces;
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
    for (const QPainterPath &piece : piecesOf(points)) {
        const QRectF box =
            piece.controlPointRect().adjusted(-lineWidth, -lineWidth, lineWidth, lineWidth);
        if (visible.intersects(context.deviceTransform().mapRect(box)))
            strokeLine(context, piece, pen);
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
