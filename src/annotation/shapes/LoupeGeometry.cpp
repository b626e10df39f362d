#include "annotation/shapes/LoupeGeometry.h"

#include "graphics/CanvasPainting.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumacap {
namespace {

namespace look {
constexpr double sizePerZoom = 0.75; // the loupe's size over its source's
constexpr double leastSize = 1.5;
constexpr double gap = 20; // canvas points between the source and the loupe
constexpr double cornerShare = 0.1; // of the shorter side
} // namespace look

} // namespace

Rect<Canvas> placedLoupe(const Rect<Canvas> &source, double zoomFactor,
                         const Rect<Canvas> &canvasBounds)
{
    const double factor = std::max(look::leastSize, look::sizePerZoom * zoomFactor);
    const Size size{source.width() * factor, source.height() * factor};
    Point<Canvas> place{source.maxX() + look::gap, source.midY() - size.height / 2};
    if (canvasBounds.maxX() < place.x + size.width)
        place.x = source.minX() - look::gap - size.width;
    if (place.x < canvasBounds.minX()) {
        place = {source.midX() - size.width / 2, source.minY() - look::gap - size.height};
    }
    place.y = std::max(canvasBounds.minY(), std::min(canvasBounds.maxY() - size.height, place.y));
    place.x = std::max(canvasBounds.minX(), std::min(canvasBounds.maxX() - size.width, place.x));
    return {place, size};
}

Point<Canvas> nearestEdgePoint(const Rect<Canvas> &rect, Point<Canvas> target)
{
    const std::array<Point<Canvas>, 4> candidates{{{rect.midX(), rect.maxY()},
                                                   {rect.midX(), rect.minY()},
                                                   {rect.minX(), rect.midY()},
                                                   {rect.maxX(), rect.midY()}}};
    return std::ranges::min(candidates, {}, [target](Point<Canvas> candidate) {
        return std::hypot(candidate.x - target.x, candidate.y - target.y);
    });
}

QPainterPath loupeOutline(const Rect<Canvas> &place, MagnifierShape shape)
{
    const double shorter = std::min(place.width(), place.height());
    QPainterPath outline;
    switch (shape) {
    case MagnifierShape::Circle:
        outline.addEllipse(toQPointF(place.center()), shorter / 2, shorter / 2);
        break;
    case MagnifierShape::RoundedRect:
        outline.addRoundedRect(toQRectF(place), shorter * look::cornerShare,
                               shorter * look::cornerShare);
        break;
    case MagnifierShape::Rectangle:
        outline.addRect(toQRectF(place));
        break;
    }
    return outline;
}

} // namespace lumacap
