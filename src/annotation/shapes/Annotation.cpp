#include "annotation/shapes/Annotation.h"

namespace lumacap {

void Annotation::drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                               const QImage & /*frozenImage*/, double /*scaleFactor*/) const
{
    draw(context, canvasBounds);
}

DrawnAreas Annotation::dragTo(Point<Canvas> point)
{
    const DrawnAreas before = drawnAreas();
    moveEnd(point);
    return joined(before, drawnAreas());
}

void Annotation::moveEnd(Point<Canvas> /*point*/) { }

} // namespace lumacap
