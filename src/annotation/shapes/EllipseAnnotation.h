#pragma once

#include "annotation/shapes/Annotation.h"

namespace lumacap {

/// The outline of the ellipse inscribed in a rectangle.
class EllipseAnnotation final : public Annotation {
public:
    EllipseAnnotation(const QColor &color, double lineWidth, const Rect<Canvas> &rect);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    DrawnAreas drawnAreas() const override;

    Point<Canvas> origin;
    Size size;

protected:
    void moveEnd(Point<Canvas> point) override { size = point - origin; }
};

} // namespace lumacap
