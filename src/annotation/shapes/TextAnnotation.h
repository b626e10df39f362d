#pragma once

#include "annotation/shapes/Annotation.h"

#include <QString>

namespace lumacap {

/// A text without a background.
class TextAnnotation final : public Annotation {
public:
    /// `lowerLeft` of the text; the stroke's width is kept, and nothing is drawn with it.
    TextAnnotation(const QColor &color, double lineWidth, Point<Canvas> lowerLeft, QString text,
                   double fontSize);

    void draw(QPainter &context, const Rect<Canvas> &canvasBounds) const override;
    DrawnAreas drawnAreas() const override;

    Point<Canvas> position;
    QString text;
    double fontSize; ///< canvas points

private:
    bool isShown() const;
};

} // namespace lumacap
