#include "annotation/shapes/RectAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

namespace lumacap {

RectAnnotation::RectAnnotation(const QColor &strokeColor, double strokeWidth,
                               const Rect<Canvas> &rect)
    : Annotation(strokeColor, strokeWidth)
    , origin(rect.origin)
    , size(rect.size)
{
}

void RectAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !hasStroke())
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    context.setPen(outlinePen(color, lineWidth));
    context.setBrush(Qt::NoBrush);
    context.drawRect(toQRectF(rect));
}

DrawnAreas RectAnnotation::drawnAreas() const
{
    const Rect<Canvas> rect{origin, size};
    return isFinite(rect) && hasStroke() ? areasAround(rect, lineWidth / 2) : DrawnAreas();
}

} // namespace lumacap
