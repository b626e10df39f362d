#include "overlay/OverlayPainting.h"

#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"
#include "overlay/MarchingAnts.h"

#include <QPainter>

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

void fill(QPainter &painter, double x1, double y1, double x2, double y2, const QColor &color)
{
    painter.fillRect(QRectF(x1, y1, x2 - x1, y2 - y1), color);
}

void paintAnts(QPainter &painter, const OverlayScene &scene)
{
    if (!scene.outline)
        return;
    for (const auto &dash : antDashes(*scene.outline, scene.antsPhase))
        painter.fillRect(toQRectF(dash), Qt::white);
    for (const auto &dash : antDashes(*scene.outline, scene.antsPhase + look::blackAntsAhead))
        painter.fillRect(toQRectF(dash), Qt::black);
}

void drawGuideLines(QPainter &painter, Point<Canvas> at, Size canvas)
{
    constexpr double half = pointerlook::guideWidth / 2;
    constexpr double gap = pointerlook::guideGap;
    const QColor color = QColor::fromRgbF(1, 1, 1, look::guideAlpha);
    fill(painter, at.x - half, 0, at.x + half, at.y - gap, color);
    fill(painter, at.x - half, at.y + gap, at.x + half, canvas.height, color);
    fill(painter, 0, at.y - half, at.x - gap, at.y + half, color);
    fill(painter, at.x + gap, at.y - half, canvas.width, at.y + half, color);
}

void drawCursorCrosshair(QPainter &painter, Point<Canvas> at)
{
    const auto arms = [&](double width, const QColor &color) {
        const double half = width / 2;
        constexpr double start = pointerlook::armStart;
        constexpr double end = pointerlook::armEnd;
        fill(painter, at.x - half, at.y + start, at.x + half, at.y + end, color);
        fill(painter, at.x - half, at.y - end, at.x + half, at.y - start, color);
        fill(painter, at.x + start, at.y - half, at.x + end, at.y + half, color);
        fill(painter, at.x - end, at.y - half, at.x - start, at.y + half, color);
    };
    arms(pointerlook::outerWidth, QColor::fromRgbF(0, 0, 0, look::crossOuterAlpha));
    arms(pointerlook::innerWidth, Qt::white);
}

void paintPointer(QPainter &painter, const OverlayScene &scene, Size canvas)
{
    if (!scene.pointer)
        return;
    if (scene.guideLines == GuideLines::Shown)
        drawGuideLines(painter, *scene.pointer, canvas);
    drawCursorCrosshair(painter, *scene.pointer);
}

void paintAnnotations(QPainter &painter, const QImage &frozenImage, const OverlayScene &scene,
                      const CanvasMeasure &canvas)
{
    const Rect<Canvas> bounds{{0, 0}, canvas.size};
    for (const auto &annotation : scene.annotations)
        annotation->drawWithImage(painter, bounds, frozenImage, canvas.scale);
    if (scene.inProgress != nullptr)
        scene.inProgress->drawWithImage(painter, bounds, frozenImage, canvas.scale);
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
    paintAnnotations(painter, frozenImage, scene, canvas);
}

} // namespace lumacap
