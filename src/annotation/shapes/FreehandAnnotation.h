#pragma once

#include "annotation/shapes/Annotation.h"

#include <vector>

namespace lumacap {

/// The pointer's way, from point to point, as it was drawn.
class FreehandAnnotation final : public Annotation {
public:
    FreehandAnnotation(const QColor &color, double lineWidth, std::vector<Point<Canvas>> points);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    bool isDrawnInParts() const override { return true; }
    DrawnAreas drawnAreas() const override;
    DrawnAreas dragTo(Point<Canvas> point) override;

    std::vector<Point<Canvas>> points;

private:
    bool isShown() const;
};

} // namespace lumacap
