#pragma once

#include "graphics/Geometry.h"

#include <span>
#include <vector>

namespace lumacap {

/// Rectangles that together hold all that is drawn: few, and small beside the box around them.
using DrawnAreas = std::vector<Rect<Canvas>>;

/// The box around two points and all that is nearer than `reach` to it, with the point that soft
/// edges may add.
Rect<Canvas> areaBetween(Point<Canvas> one, Point<Canvas> other, double reach);

/// All that is nearer than `reach` to the straight way through `points`, which may be one.
DrawnAreas areasAlong(std::span<const Point<Canvas>> points, double reach);

/// All that is nearer than `reach` to the outline of `rect`.
DrawnAreas areasAround(const Rect<Canvas> &rect, double reach);

DrawnAreas joined(DrawnAreas some, const DrawnAreas &others);

} // namespace lumacap
