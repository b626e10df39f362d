#include "annotation/shapes/TextAnnotation.h"

#include "graphics/Text.h"

#include <cmath>
#include <utility>

namespace lumacap {

TextAnnotation::TextAnnotation(const QColor &textColor, double strokeWidth, Point<Canvas> lowerLeft,
                               QString words, double points)
    : Annotation(textColor, strokeWidth)
    , position(lowerLeft)
    , text(std::move(words))
    , fontSize(points)
{
}

void TextAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    const bool hasSize = std::isfinite(fontSize) && fontSize > 0;
    if (text.isEmpty() || !isFinite(position) || !hasSize)
        return;
    Text(text, fontSize, FontWeight::Medium).draw(context, position, color);
}

} // namespace lumacap
