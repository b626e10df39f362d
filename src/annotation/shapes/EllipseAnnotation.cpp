#include "annotation/shapes/EllipseAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

namespace lumacap {

EllipseAnnotation::EllipseAnnotation(const QColor &strokeColor, double strokeWidth,
                                     const Rect<Canvas> &rect)
    : Annotation(strokeColor, strokeWidth)
    , origin(rect.origin)
    , size(rect.size)
{
}

void EllipseAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !hasStroke())
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    context.setPen(outlinePen(color, lineWidth));
    context.setBrush(Qt::NoBrush);
    context.drawEllipse(toQRectF(rect));
}

} // namespace lumacap
