#pragma once

#include "graphics/Geometry.h"

class QImage;
class QPainter;
class QPainterPath;

namespace lumacap {

/// Draws that part of `picture`, stretched over the whole of `place`, which lies inside `outline`,
/// with smooth transitions between its pixels. The painter is in canvas space, on a picture in
/// device pixels; what it draws inside a clip is what it draws without one.
void drawEnlarged(QPainter &context, const Rect<Canvas> &place, const QPainterPath &outline,
                  const QImage &picture);

} // namespace lumacap
