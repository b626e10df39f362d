#pragma once

#include "annotation/shapes/Annotation.h"
#include "annotation/vocabulary/MagnifierShape.h"

#include <array>

namespace lumacap {

class Text;

/// A part of the screen and, beside it, a loupe that shows it enlarged.
class MagnifierAnnotation final : public Annotation {
public:
    /// The loupe is empty until it is placed.
    MagnifierAnnotation(const QColor &color, double lineWidth, const Rect<Canvas> &source,
                        double zoomFactor, MagnifierShape shape);

    /// The two outlines and what connects them, for want of the picture beneath.
    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    void drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                       const QImage &frozenImage, double scaleFactor) const override;
    bool isDrawnInParts() const override { return true; }
    DrawnAreas drawnAreas() const override;

    /// Sets the loupe's origin and size by the source and the zoom.
    void autoPlaceLoupe(const Rect<Canvas> &canvasBounds);

    /// Standardized, as is `loupe()`.
    Rect<Canvas> source() const { return Rect<Canvas>{sourceOrigin, sourceSize}.standardized(); }
    Rect<Canvas> loupe() const { return Rect<Canvas>{loupeOrigin, loupeSize}.standardized(); }

    Point<Canvas> sourceOrigin;
    Size sourceSize;
    Point<Canvas> loupeOrigin;
    Size loupeSize;
    double zoomFactor;
    MagnifierShape shape;

protected:
    /// Of its source.
    void moveEnd(Point<Canvas> point) override { sourceSize = point - sourceOrigin; }

private:
    bool hasSource() const;
    bool hasLoupe() const;
    void strokeSource(QPainter &context) const;
    void strokeLoupe(QPainter &context) const;
    /// From the source's edge to the loupe's.
    std::array<Point<Canvas>, 2> connector() const;
    double connectorWidth() const;
    void drawConnector(QPainter &context) const;
    Text zoomText() const;
    /// The dark plate that `text`, the zoom, is written on.
    Rect<Canvas> badgeBehind(const Text &text) const;
    void drawZoomBadge(QPainter &context) const;
};

} // namespace lumacap
