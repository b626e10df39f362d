#pragma once

#include "annotation/shapes/Annotation.h"

namespace lumacap {

/// A region made unreadable.
class BlurAnnotation final : public Annotation {
public:
    /// The colour and the stroke's width are kept, and nothing is drawn with them.
    BlurAnnotation(const QColor &color, double lineWidth, const Rect<Canvas> &rect);

    /// A grey veil, for want of the picture beneath.
    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    /// The region in blocks, a veil where the picture has no pixel under it.
    void drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                       const QImage &frozenImage, double scaleFactor) const override;
    bool isDrawnInParts() const override { return true; }
    DrawnAreas drawnAreas() const override;

    Point<Canvas> origin;
    Size size;

protected:
    void moveEnd(Point<Canvas> point) override { size = point - origin; }
};

} // namespace lumacap
