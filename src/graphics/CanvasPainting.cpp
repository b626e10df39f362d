#include "graphics/CanvasPainting.h"

#include "graphics/PainterState.h"

#include <QPainter>
#include <QPainterPath>

namespace lumacap {

void fillRects(QPainter &painter, std::span<const Rect<Canvas>> rects, const QColor &color)
{
    QPainterPath path;
    for (const Rect<Canvas> &rect : rects) {
        path.moveTo(rect.minX(), rect.minY());
        path.lineTo(rect.midX(),
                    rect.minY()); // with five corners it is no rectangle to the painter
        path.lineTo(rect.maxX(), rect.minY());
        path.lineTo(rect.maxX(), rect.maxY());
        path.lineTo(rect.minX(), rect.maxY());
        path.closeSubpath();
    }
    const PainterState state(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, color);
}

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
