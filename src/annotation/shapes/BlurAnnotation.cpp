#include "annotation/shapes/BlurAnnotation.h"

#include "annotation/shapes/FrozenCrop.h"
#include "annotation/shapes/Pixelation.h"
#include "graphics/CanvasPainting.h"
#include "graphics/Rgb.h"

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr double leastVeil = 2;
constexpr double leastPixelation = 4;
constexpr Rgb veil{0.5, 0.5, 0.5};
constexpr double veilAlpha = 0.3;
} // namespace look

bool exceeds(const Rect<Canvas> &rect, double least)
{
    return rect.width() > least && rect.height() > least;
}

} // namespace

BlurAnnotation::BlurAnnotation(const QColor &unusedColor, double unusedWidth,
                               const Rect<Canvas> &rect)
    : Annotation(unusedColor, unusedWidth)
    , origin(rect.origin)
    , size(rect.size)
{
}

void BlurAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !exceeds(rect, look::leastVeil))
        return;
    fillRects(context, std::span(&rect, 1), toQColor(look::veil, look::veilAlpha));
}

void BlurAnnotation::drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                                   const QImage &frozenImage, double scaleFactor) const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !exceeds(rect, look::leastPixelation))
        return;
    const QImage crop = cropUnder(rect, frozenImage, scaleFactor);
    if (crop.isNull())
        return draw(context, canvasBounds);
    drawPixelated(context, rect, crop);
}

DrawnAreas BlurAnnotation::drawnAreas() const
{
    const Rect<Canvas> rect{origin, size};
    if (!isFinite(rect) || !exceeds(rect, look::leastVeil))
        return {};
    return {areaBetween(origin, {origin.x + size.width, origin.y + size.height}, 0)};
}

} // namespace lumacap
