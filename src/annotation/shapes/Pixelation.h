#pragma once

#include "graphics/Geometry.h"

class QImage;
class QPainter;

namespace lumacap {

/// Into how many blocks a pixelated stretch of `length` canvas points falls: one for every whole
/// eight points, at least one.
double pixelationBlocks(double length);

/// Draws `picture` over `area` in blocks of one colour each, with hard edges: what reducing it to
/// one pixel a block and enlarging that again give, both without interpolation. The painter is in
/// canvas space, on a picture in device pixels.
void drawPixelated(QPainter &context, const Rect<Canvas> &area, const QImage &picture);

} // namespace lumacap
