#include "annotation/shapes/Annotation.h"

namespace lumacap {

void Annotation::drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                               const QImage & /*frozenImage*/, double /*scaleFactor*/) const
{
    draw(context, canvasBounds);
}

} // namespace lumacap
