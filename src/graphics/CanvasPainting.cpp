#include "graphics/CanvasPainting.h"

#include <QPainter>

namespace lumacap {

QTransform canvasToPixels(Point<Canvas> lowerLeft, double scale, int pixelHeight)
{
    return {scale, 0, 0, -scale, -lowerLeft.x * scale, pixelHeight + lowerLeft.y * scale};
}

QRectF visiblePixels(const QPainter &painter)
{
    const QRectF all(0, 0, painter.device()->width(), painter.device()->height());
    if (!painter.hasClipping())
        return all;
    return all & painter.deviceTransform().mapRect(painter.clipBoundingRect());
}

} // namespace lumacap
