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

/// Whole pixels in a length, which is not negative, the rest cut off; nothing where no picture has
/// such a side.
std::optional<int> pixelLength(double length)
{
    const double pixels = std::trunc(length + pixelRounding);
    if (!(pixels < static_cast<double>(std::numeric_limits<int64_t>::max())))
        fatal("a picture's side is no number of pixels");
    if (pixels < 1 || pixels > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(pixels);
}

/// The first of the screen's pixels that a picture of `area` shows, by its upper left corner.
QPoint firstPixel(const Rect<Canvas> &area, Size screenSize, double scale)
{
    const auto nearest = [](double pixels) {
        constexpr double farOutside = 1 << 30;
        return static_cast<int>(std::lround(std::clamp(pixels, -farOutside, farOutside)));
    };
    return {nearest(area.minX() * scale), nearest((screenSize.height - area.maxY()) * scale)};
}

/// The picture as annotations and the renderer need it, copied only where it is not.
QImage asPixels(const QImage &frozenImage)
{
    QImage pixels = frozenImage.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (pixels.devicePixelRatio() != 1)
        pixels.setDevicePixelRatio(1);
    return pixels;
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
    const QImage screenPixels = asPixels(frozenImage);
    const QPoint first = firstPixel(area, screenSize, scale);
    QImage image = screenPixels.copy({first, QSize(*width, *height)});
    if (image.isNull())
        return std::nullopt;
    QPainter painter(&image);
    // Annotations follow the pixels, so that they lie over what they were drawn over.
    painter.setTransform({scale, 0, 0, -scale, static_cast<double>(-first.x()),
                          screenSize.height * scale - first.y()});
    for (const std::unique_ptr<Annotation> &annotation : annotations)
        annotation->drawWithImage(painter, screen, screenPixels, scale);
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
