#pragma once

#include "annotation/shapes/Annotation.h"

namespace lumacap {

/// A rectangle's outline.
class RectAnnotation final : public Annotation {
public:
    RectAnnotation(const QColor &color, double lineWidth, const Rect<Canvas> &rect);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;

    Point<Canvas> origin;
    Size size;
};

} // namespace lumacap
