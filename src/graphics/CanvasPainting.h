#pragma once

#include "graphics/Geometry.h"

#include <QPointF>
#include <QRectF>
#include <QTransform>

#include <span>

class QColor;
class QPainter;

namespace lumacap {

inline QPointF toQPointF(Point<Canvas> point)
{
    return {point.x, point.y};
}

/// The standardized rectangle. Its `top` is the lower edge, for y goes up in the canvas.
inline QRectF toQRectF(const Rect<Canvas> &rect)
{
    return {rect.minX(), rect.minY(), rect.width(), rect.height()};
}

/// What sums of points divided by a scale are off by, times that scale: no visible share of a
/// pixel.
inline constexpr double pixelRounding = 1e-6;

/// Fills `rects`, which do not overlap, in canvas space, with soft edges. A painter fills a
/// rectangle by a way of its own whose pixels depend a little on the clip, and a part drawn anew
/// must fit what is there.
void fillRects(QPainter &painter, std::span<const Rect<Canvas>> rects, const QColor &color);

/// What takes canvas points to the pixels of a picture `pixelHeight` high whose lower left corner
/// shows `lowerLeft`, at `scale` pixels a point.
QTransform canvasToPixels(Point<Canvas> lowerLeft, double scale, int pixelHeight);

/// The device pixels that `painter` can change: those of its picture, inside its clip.
QRectF visiblePixels(const QPainter &painter);

} // namespace lumacap
