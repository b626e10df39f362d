#pragma once

#include "graphics/Geometry.h"
#include "graphics/RectGrid.h"

#include <array>

namespace lumacap {

/// The dashes of one pass of the line that crawls around `rect`: 6 points long with gaps of 4,
/// around the four sides, counterclockwise from the lower left, begun `phase` points into the
/// pattern, as far as they may be seen in `canvas`. `rect` is finite. Each side is a row of dashes.
std::array<RectGrid, 4> antDashes(const Rect<Canvas> &rect, double phase, Size canvas);

/// The phase after `phase`: one point on, from 16 back to 0.
double nextAntsPhase(double phase);

/// How far the line reaches to each side of the rectangle's edges, in points.
double antsReach();

} // namespace lumacap
