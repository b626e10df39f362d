#pragma once

#include "annotation/shapes/Annotation.h"

#include <array>

namespace lumacap {

/// The head of an arrow: a filled triangle of the tip and two barbs.
std::array<Point<Canvas>, 3> arrowHead(Point<Canvas> start, Point<Canvas> end, double lineWidth);

/// A straight shaft that reaches the tip, and a head over its end.
class ArrowAnnotation final : public Annotation {
public:
    ArrowAnnotation(const QColor &color, double lineWidth, Point<Canvas> start, Point<Canvas> end);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    DrawnAreas drawnAreas() const override;

    Point<Canvas> startPoint;
    Point<Canvas> endPoint;

protected:
    void moveEnd(Point<Canvas> point) override { endPoint = point; }
};

} // namespace lumacap
