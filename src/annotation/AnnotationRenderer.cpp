#include "annotation/AnnotationRenderer.h"

#include "annotation/frame/FramedImage.h"
#include "annotation/frame/RandomSource.h"
#include "graphics/CanvasPainting.h"
#include "graphics/Fatal.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace lumacap {
namespace {

/// Whole pixels in a length, the rest cut off; nothing where no picture has such a side.
std::optional<int> pixelLength(double length)
{
    // What sums of points divided by a scale are off by; no visible share of a pixel.
    constexpr double rounding = 1e-6;
    const double pixels = std::trunc(length + rounding);
    if (!(std::abs(pixels) < static_cast<double>(std::numeric_limits<int64_t>::max())))
        fatal("a picture's side is no number of pixels");
    if (pixels < 1 || pixels > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(pixels);
}

/// The part of the screen that a picture of `size` pixels begun at `area`'s upper left corner
/// shows, transparent where there is no screen.
QImage croppedTo(const Rect<Canvas> &area, QSize size, const QImage &frozenImage, Size screenSize,
                 double scale)
{
    const auto nearest = [](double pixels) {
        constexpr double farOutside = 1 << 30;
        return static_cast<int>(std::lround(std::clamp(pixels, -farOutside, farOutside)));
    };
    const QPoint first(nearest(area.minX() * scale),
                       nearest((screenSize.height - area.maxY()) * scale));
    return frozenImage.copy({first, size}).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

std::optional<QImage> AnnotationRenderer::renderFinalImage(
    const QImage &frozenImage, const std::optional<Rect<Canvas>> &selectionViewRect,
    std::span<const std::unique_ptr<Annotation>> annotations, Size screenSize, int scaleFactor)
{
    const Rect<Canvas> screen{{0, 0}, screenSize};
    const Rect<Canvas> area = selectionViewRect.value_or(screen).standardized();
    if (!isFinite(area))
        fatal("a selection's edges are numbers");
    const double scale = scaleFactor;
    const std::optional<int> width = pixelLength(area.width() * scale);
    const std::optional<int> height = pixelLength(area.height() * scale);
    if (!width || !height)
        return std::nullopt;
    QImage image = croppedTo(area, {*width, *height}, frozenImage, screenSize, scale);
    if (image.isNull())
        return std::nullopt;
    QPainter painter(&image);
    painter.setTransform(canvasToPixels(area.origin, scale, *height));
    for (const std::unique_ptr<Annotation> &annotation : annotations)
        annotation->drawWithImage(painter, screen, frozenImage, scale);
    return image;
}

std::optional<QImage>
AnnotationRenderer::renderFramedImage(const QImage &base,
                                      const std::optional<QString> &sourceAppName,
                                      FrameBackgroundStyle backgroundStyle, int scaleFactor)
{
    SystemRandom random;
    return lumacap::renderFramedImage(base, sourceAppName, backgroundStyle, scaleFactor, random);
}

} // namespace lumacap
