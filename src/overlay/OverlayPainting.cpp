#include "overlay/OverlayPainting.h"

#include "graphics/CanvasPainting.h"
#include "graphics/RectGrid.h"
#include "overlay/MarchingAnts.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <span>
#include <vector>

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
    uchar *const to = target.bits();
    const uchar *const from = source.constBits();
    for (const QRect &rect : pixels) {
        const auto bytes = static_cast<std::size_t>(rect.width()) * sizeof(QRgb);
        const qsizetype left = rect.left() * static_cast<qsizetype>(sizeof(QRgb));
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            std::memcpy(to + y * target.bytesPerLine() + left,
                        from + y * source.bytesPerLine() + left, bytes);
    }
}

Interval around(double place, double reach)
{
    return {place - reach, place + reach};
}

/// Where the overlay's own lines are drawn, and by how many pixels a point.
struct Lines {
    QImage &target;
    const QRegion &clip;
    double scale;

    void draw(std::span<const RectGrid> grids, const QColor &color) const
    {
        fillGrids(target, scale, grids, color, clip);
    }
};

void paintAnts(const Lines &lines, const OverlayScene &scene, Size canvas)
{
    if (!scene.outline || !isFinite(*scene.outline))
        return;
    lines.draw(antDashes(*scene.outline, scene.antsPhase, canvas), Qt::white);
    lines.draw(antDashes(*scene.outline, scene.antsPhase + look::blackAntsAhead, canvas),
               Qt::black);
}

void drawGuideLines(const Lines &lines, Point<Canvas> at, Size canvas)
{
    constexpr double half = pointerlook::guideWidth / 2;
    constexpr double gap = pointerlook::guideGap;
    const std::array guides{
        RectGrid{{around(at.x, half)}, {{0, at.y - gap}, {at.y + gap, canvas.height}}},
        RectGrid{{{0, at.x - gap}, {at.x + gap, canvas.width}}, {around(at.y, half)}}};
    lines.draw(guides, QColor::fromRgbF(1, 1, 1, look::guideAlpha));
}

void drawArms(const Lines &lines, Point<Canvas> at, double width, const QColor &color)
{
    constexpr double start = pointerlook::armStart;
    constexpr double end = pointerlook::armEnd;
    const std::array arms{RectGrid{{around(at.x, width / 2)},
                                   {{at.y - end, at.y - start}, {at.y + start, at.y + end}}},
                          RectGrid{{{at.x - end, at.x - start}, {at.x + start, at.x + end}},
                                   {around(at.y, width / 2)}}};
    lines.draw(arms, color);
}

void drawCursorCrosshair(const Lines &lines, Point<Canvas> at)
{
    drawArms(lines, at, pointerlook::outerWidth, QColor::fromRgbF(0, 0, 0, look::crossOuterAlpha));
    drawArms(lines, at, pointerlook::innerWidth, Qt::white);
}

void paintPointer(const Lines &lines, const OverlayScene &scene, Size canvas)
{
    if (!scene.pointer)
        return;
    if (scene.guideLines == GuideLines::Shown)
        drawGuideLines(lines, *scene.pointer, canvas);
    drawCursorCrosshair(lines, *scene.pointer);
}

/// The clip is a rectangle wherever it can be: for any other the painter walks over its whole
/// picture's rows.
void paintLabel(QImage &target, const OverlayLabel &label, const CanvasMeasure &canvas,
                const QRegion &pixels)
{
    const auto background = label.background();
    const QRegion clip = background ? pixels & pixelsUnder(*background, canvas) : QRegion();
    if (clip.isEmpty())
        return;
    QPainter painter(&target);
    painter.setClipRegion(clip);
    painter.setTransform(canvasToPixels({0, 0}, canvas.scale, target.height()));
    label.draw(painter);
}

/// The rectangles of `pixels` that a mark reaches.
QRegion reachedOf(const QRegion &pixels, const DrawnPixels &mark)
{
    std::vector<QRect> reached;
    std::ranges::copy_if(pixels, std::back_inserter(reached), [&](const QRect &rect) {
        return std::ranges::any_of(mark, [&](const QRect &box) { return box.intersects(rect); });
    });
    QRegion region;
    region.setRects(reached.data(), static_cast<int>(reached.size())); // in their order still
    return region;
}

/// A long line is drawn once and clipped: to stroke it again for each rectangle that it crosses
/// takes much longer.
void paintAnnotations(QImage &target, const QImage &frozenImage, const OverlayScene &scene,
                      const CanvasMeasure &canvas, const QRegion &pixels)
{
    if (scene.annotations.isEmpty() && !scene.inProgress)
        return;
    QPainter painter(&target);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto paintIn = [&](const QRegion &clip, const Annotation &annotation) {
        painter.setTransform({});
        painter.setClipRegion(clip);
        painter.setTransform(canvasToPixels({0, 0}, canvas.scale, target.height()));
        annotation.drawWithImage(painter, {{0, 0}, canvas.size}, frozenImage, canvas.scale);
    };
    const auto paint = [&](const Annotation &annotation, const DrawnPixels &drawn) {
        const QRegion reached = reachedOf(pixels, drawn);
        if (annotation.isDrawnInParts()) {
            for (const QRect &rect : reached)
                paintIn(rect, annotation);
        } else if (!reached.isEmpty()) {
            paintIn(reached, annotation);
        }
    };
    for (const DrawnAnnotation &mark : scene.annotations)
        paint(*mark.annotation, mark.pixels);
    if (scene.inProgress)
        paint(*scene.inProgress->annotation, scene.inProgress->pixels);
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

    const Lines lines{target, inside, static_cast<double>(canvas.scale)};
    paintAnts(lines, scene, canvas.size);
    if (scene.label)
        paintLabel(target, *scene.label, canvas, inside);
    paintPointer(lines, scene, canvas.size);
    paintAnnotations(target, frozenImage, scene, canvas, inside);
}

} // namespace lumacap
