#pragma once

#include "annotation/shapes/DrawnAreas.h"
#include "graphics/Geometry.h"

#include <QColor>
#include <QUuid>

#include <cmath>
#include <utility>

class QImage;
class QPainter;

namespace lumacap {

/// One mark drawn over the selected area. The overlay edits its fields while the user drags.
/// Rectangles may have negative sides; they mean the area they cover. A mark whose points or
/// width are no numbers draws nothing.
class Annotation {
public:
    /// `lineWidth` in canvas points.
    Annotation(QColor strokeColor, double strokeWidth)
        : color(std::move(strokeColor))
        , lineWidth(strokeWidth)
    {
    }
    Q_DISABLE_COPY_MOVE(Annotation)
    virtual ~Annotation() = default;

    /// The mark's own for its whole life: undoing refers to it.
    QUuid id() const { return m_id; }

    /// Draws into a painter in canvas space and gives it back as it was. `canvasBounds` is the
    /// whole canvas.
    virtual void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const = 0;

    /// Draws as it looks in the final picture, for which some kinds need the screen beneath them:
    /// `frozenImage` in device pixels, `scaleFactor` of them a canvas point. The painter is one on
    /// a picture in device pixels of its own.
    virtual void drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                               const QImage &frozenImage, double scaleFactor) const;

    /// Whether it draws only what is near the box around the painter's clip, so that one drawing
    /// for each part of the clip takes less time than one for all of it.
    virtual bool isDrawnInParts() const { return false; }

    /// Where it draws, and beyond which it changes no pixel; nothing where it draws nothing.
    virtual DrawnAreas drawnAreas() const = 0;

    /// Follows the pointer that draws it: its end, its far corner or its next point. Answers where
    /// it may look different now.
    virtual DrawnAreas dragTo(Point<Canvas> point);

    QColor color;
    double lineWidth;

protected:
    /// What `dragTo` does to a kind that is drawn by dragging.
    virtual void moveEnd(Point<Canvas> point);

    /// Whether there is a width to stroke with.
    bool hasStroke() const { return std::isfinite(lineWidth) && lineWidth > 0; }

private:
    const QUuid m_id = QUuid::createUuid();
};

} // namespace lumacap
