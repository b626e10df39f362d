#include "overlay/OverlayPainting.h"

#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"
#include "overlay/MarchingAnts.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace lumacap {
namespace {

namespace look {
constexpr std::uint32_t shareLeftByVeil = 255 - 89; // of 255: black at alpha 0.35
constexpr double blackAntsAhead = 6; // points, behind which the white ones show
constexpr float guideAlpha = 0.4F;
constexpr float crossOuterAlpha = 0.5F;
} // namespace look

QRgb veiled(QRgb pixel)
{
    // Two channels at a time; x / 255 rounded is (x + 128 + (x + 128) / 256) / 256.
    constexpr std::uint32_t evenBytes = 0x00ff00ff;
    constexpr std::uint32_t half = 0x00800080;
    std::uint32_t even = (pixel & evenBytes) * look::shareLeftByVeil + half;
    even = ((even + (even >> 8 & evenBytes)) >> 8) & evenBytes;
    std::uint32_t odd = (pixel >> 8 & 0xff) * look::shareLeftByVeil + 0x80;
    odd = (odd + (odd >> 8)) & 0xff00;
    return 0xff000000 | even | odd;
}

void copyPixels(QImage &target, const QImage &source, const QRegion &pixels)
{
    for (const QRect &rect : pixels) {
        const auto bytes = static_cast<std::size_t>(rect.width()) * sizeof(QRgb);
        const qsizetype offset = rect.left() * static_cast<qsizetype>(sizeof(QRgb));
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            std::memcpy(target.scanLine(y) + offset, source.constScanLine(y) + offset, bytes);
    }
}

Rect<Canvas> spanned(Point<Canvas> lowerLeft, Point<Canvas> upperRight)
{
    return {lowerLeft, upperRight - lowerLeft};
}

void paintAnts(QPainter &painter, const OverlayScene &scene)
{
    if (!scene.outline)
        return;
    fillRects(painter, antDashes(*scene.outline, scene.antsPhase), Qt::white);
    fillRects(painter, antDashes(*scene.outline, scene.antsPhase + look::blackAntsAhead),
              Qt::black);
}

void drawGuideLines(QPainter &painter, Point<Canvas> at, Size canvas)
{
    constexpr double half = pointerlook::guideWidth / 2;
    constexpr double gap = pointerlook::guideGap;
    const std::array<Rect<Canvas>, 4> lines{
        spanned({at.x - half, 0}, {at.x + half, at.y - gap}),
        spanned({at.x - half, at.y + gap}, {at.x + half, canvas.height}),
        spanned({0, at.y - half}, {at.x - gap, at.y + half}),
        spanned({at.x + gap, at.y - half}, {canvas.width, at.y + half})};
    fillRects(painter, lines, QColor::fromRgbF(1, 1, 1, look::guideAlpha));
}

void drawArms(QPainter &painter, Point<Canvas> at, double width, const QColor &color)
{
    const double half = width / 2;
    constexpr double start = pointerlook::armStart;
    constexpr double end = pointerlook::armEnd;
    const std::array<Rect<Canvas>, 4> arms{
        spanned({at.x - half, at.y + start}, {at.x + half, at.y + end}),
        spanned({at.x - half, at.y - end}, {at.x + half, at.y - start}),
        spanned({at.x + start, at.y - half}, {at.x + end, at.y + half}),
        spanned({at.x - end, at.y - half}, {at.x - start, at.y + half})};
    fillRects(painter, arms, color);
}

void drawCursorCrosshair(QPainter &painter, Point<Canvas> at)
{
    drawArms(painter, at, pointerlook::outerWidth,
             QColor::fromRgbF(0, 0, 0, look::crossOuterAlpha));
    drawArms(painter, at, pointerlook::innerWidth, Qt::white);
}

void paintPointer(QPainter &painter, const OverlayScene &scene, Size canvas)
{
    if (!scene.pointer)
        return;
    if (scene.guideLines == GuideLines::Shown)
        drawGuideLines(painter, *scene.pointer, canvas);
    drawCursorCrosshair(painter, *scene.pointer);
}

/// Each rectangle by itself, and in it the marks that reach there: a long scribble would take its
/// time for the whole box around all of them.
void paintAnnotations(QPainter &painter, const QImage &frozenImage, const OverlayScene &scene,
                      const CanvasMeasure &canvas, const QRegion &pixels)
{
    const Rect<Canvas> bounds{{0, 0}, canvas.size};
    const QTransform toPixels = painter.transform();
    for (const QRect &rect : pixels) {
        painter.setTransform({});
        painter.setClipRect(rect);
        painter.setTransform(toPixels);
        const auto paint = [&](const Annotation &annotation, const DrawnPixels &drawn) {
            const auto isReached = [&](const QRect &box) { return box.intersects(rect); };
            if (std::ranges::any_of(drawn, isReached))
                annotation.drawWithImage(painter, bounds, frozenImage, canvas.scale);
        };
        for (const DrawnAnnotation &mark : scene.annotations)
            paint(*mark.annotation, mark.pixels);
        if (scene.inProgress)
            paint(*scene.inProgress->annotation, scene.inProgress->pixels);
    }
}

} // namespace

QImage dimmed(const QImage &frozenImage)
{
    QImage result(frozenImage.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < result.height(); ++y) {
        const auto *const from = reinterpret_cast<const QRgb *>(frozenImage.constScanLine(y));
        auto *const to = reinterpret_cast<QRgb *>(result.scanLine(y));
        const int width = result.width();
        for (int x = 0; x < width; ++x)
            to[x] = veiled(from[x]);
    }
    return result;
}

void paintOverlay(QImage &target, const QImage &frozenImage, const QImage &dimmedImage,
                  const OverlayScene &scene, const CanvasMeasure &canvas, const QRegion &pixels)
{
    const QRegion inside = pixels & target.rect();
    if (inside.isEmpty())
        return;
    const QRegion clear = scene.outline ? inside & clearPixels(*scene.outline, canvas) : QRegion();
    copyPixels(target, dimmedImage, inside - clear);
    copyPixels(target, frozenImage, clear);

    QPainter painter(&target);
    painter.setClipRegion(inside);
    painter.setTransform(canvasToPixels({0, 0}, canvas.scale, target.height()));
    painter.setRenderHint(QPainter::Antialiasing);
    paintAnts(painter, scene);
    if (scene.label)
        drawDimensionLabel(painter, *scene.label);
    paintPointer(painter, scene, canvas.size);
    paintAnnotations(painter, frozenImage, scene, canvas, inside);
}

} // namespace lumacap
