#pragma once

#include "annotation/shapes/Annotation.h"

namespace lumacap {

/// A disc with a number in it.
class NumberedPointAnnotation final : public Annotation {
public:
    NumberedPointAnnotation(const QColor &color, Point<Canvas> center, int number);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    DrawnAreas drawnAreas() const override;

    Point<Canvas> center;
    int number;
};

} // namespace lumacap
