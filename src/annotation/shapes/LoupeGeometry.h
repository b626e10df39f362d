#pragma once

#include "annotation/vocabulary/MagnifierShape.h"
#include "graphics/Geometry.h"

#include <QPainterPath>

namespace lumacap {

/// Where the loupe over `source` goes: beside it where the canvas has room, else below it, and in
/// any case moved into the canvas, whose minimum edges win over a loupe that is too large.
Rect<Canvas> placedLoupe(const Rect<Canvas> &source, double zoomFactor,
                         const Rect<Canvas> &canvasBounds);

/// The midpoint of that side of `rect` which is nearest to `target`; of equally near ones the first
/// of top, bottom, left, right.
Point<Canvas> nearestEdgePoint(const Rect<Canvas> &rect, Point<Canvas> target);

/// The outline of a loupe that takes `place`.
QPainterPath loupeOutline(const Rect<Canvas> &place, MagnifierShape shape);

} // namespace lumacap
