#pragma once

#include "annotation/shapes/Annotation.h"

namespace lumacap {

/// A rectangle's outline.
class RectAnnotation final : public Annotation {
public:
    RectAnnotation(const QColor &color, double lineWidth, const Rect<Canvas> &rect);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    DrawnAreas drawnAreas() const override;

    Point<Canvas> origin;
    Size size;

protected:
    void moveEnd(Point<Canvas> point) override { size = point - origin; }
};

} // namespace lumacap
