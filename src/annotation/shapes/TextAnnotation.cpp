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
    if (!isShown())
        return;
    Text(text, fontSize, FontWeight::Medium).draw(context, position, color);
}

DrawnAreas TextAnnotation::drawnAreas() const
{
    if (!isShown())
        return {};
    return {Text(text, fontSize, FontWeight::Medium).drawnArea(position)};
}

bool TextAnnotation::isShown() const
{
    const bool hasSize = std::isfinite(fontSize) && fontSize > 0;
    return !text.isEmpty() && isFinite(position) && hasSize;
}

} // namespace lumacap
