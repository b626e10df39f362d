#include "annotation/shapes/NumberedPointAnnotation.h"

#include "annotation/shapes/Strokes.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"
#include "graphics/Text.h"

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr double radius = 14;
constexpr double rim = 2;
constexpr double fontSize = 14;
} // namespace look

} // namespace

NumberedPointAnnotation::NumberedPointAnnotation(const QColor &fillColor, Point<Canvas> middle,
                                                 int shownNumber)
    : Annotation(fillColor, look::rim)
    , center(middle)
    , number(shownNumber)
{
}

void NumberedPointAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    if (!isFinite(center))
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    context.setBrush(color);
    context.setPen(Qt::NoPen);
    context.drawEllipse(toQPointF(center), look::radius, look::radius);
    context.setBrush(Qt::NoBrush);
    context.setPen(outlinePen(Qt::white, look::rim));
    context.drawEllipse(toQPointF(center), look::radius, look::radius);

    const Text digits(QString::number(number), look::fontSize, FontWeight::Bold);
    const Size size = digits.size();
    digits.draw(context, {center.x - size.width / 2, center.y - size.height / 2}, Qt::white);
}

DrawnAreas NumberedPointAnnotation::drawnAreas() const
{
    if (!isFinite(center))
        return {};
    const Text digits(QString::number(number), look::fontSize, FontWeight::Bold);
    const Size size = digits.size();
    return {areaBetween(center, center, look::radius + look::rim / 2),
            digits.drawnArea({center.x - size.width / 2, center.y - size.height / 2})};
}

} // namespace lumacap
