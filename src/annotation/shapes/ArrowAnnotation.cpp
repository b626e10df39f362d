#include "annotation/shapes/ArrowAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumacap {
namespace {

namespace look {
constexpr double halfAngle = std::numbers::pi / 6; // between the shaft and each edge of the head
constexpr double lengthAtNoWidth = 15; // canvas points
constexpr double lengthPerWidth = 2;
} // namespace look

} // namespace

std::array<Point<Canvas>, 3> arrowHead(Point<Canvas> start, Point<Canvas> end, double lineWidth)
{
    const double angle = std::atan2(end.y - start.y, end.x - start.x);
    const double length = look::lengthPerWidth * lineWidth + look::lengthAtNoWidth;
    const auto barb = [&](double direction) -> Point<Canvas> {
        return {end.x - length * std::cos(direction), end.y - length * std::sin(direction)};
    };
    return {end, barb(angle - look::halfAngle), barb(angle + look::halfAngle)};
}

ArrowAnnotation::ArrowAnnotation(const QColor &strokeColor, double strokeWidth, Point<Canvas> start,
                                 Point<Canvas> end)
    : Annotation(strokeColor, strokeWidth)
    , startPoint(start)
    , endPoint(end)
{
}

void ArrowAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    if (!isFinite(startPoint) || !isFinite(endPoint) || !hasStroke())
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    QPainterPath shaft(toQPointF(startPoint));
    shaft.lineTo(toQPointF(endPoint));
    strokeLine(context, shaft, QPen(color, lineWidth, Qt::SolidLine, Qt::RoundCap));

    const auto [tip, first, second] = arrowHead(startPoint, endPoint, lineWidth);
    const std::array head{toQPointF(tip), toQPointF(first), toQPointF(second)};
    context.setPen(Qt::NoPen);
    context.setBrush(color);
    context.drawPolygon(head.data(), static_cast<int>(head.size()), Qt::WindingFill);
}

DrawnAreas ArrowAnnotation::drawnAreas() const
{
    if (!isFinite(startPoint) || !isFinite(endPoint) || !hasStroke())
        return {};
    const std::array shaft{startPoint, endPoint};
    DrawnAreas areas = areasAlong(shaft, lineWidth / 2);
    const auto [tip, first, second] = arrowHead(startPoint, endPoint, lineWidth);
    const auto [left, right] = std::minmax({tip.x, first.x, second.x});
    const auto [bottom, top] = std::minmax({tip.y, first.y, second.y});
    areas.push_back(areaBetween({left, bottom}, {right, top}, 0));
    return areas;
}

} // namespace lumacap
