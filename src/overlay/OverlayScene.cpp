#include "overlay/OverlayScene.h"

#include "overlay/MarchingAnts.h"

#include <QRect>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ranges>

namespace lumacap {
namespace {

constexpr double farOutside = 1 << 24; // beyond every screen, and still exact

int toPixel(double value)
{
    return static_cast<int>(std::clamp(value, -farOutside, farOutside));
}

/// The pixels of the line around `outline`.
QRegion antsPixels(const Rect<Canvas> &outline, const CanvasMeasure &canvas)
{
    const double reach = antsReach();
    const auto side = [&](double x1, double y1, double x2, double y2) {
        return pixelsUnder({{x1 - reach, y1 - reach}, {x2 - x1 + 2 * reach, y2 - y1 + 2 * reach}},
                           canvas);
    };
    QRegion pixels;
    pixels += side(outline.minX(), outline.minY(), outline.maxX(), outline.minY());
    pixels += side(outline.minX(), outline.maxY(), outline.maxX(), outline.maxY());
    pixels += side(outline.minX(), outline.minY(), outline.minX(), outline.maxY());
    pixels += side(outline.maxX(), outline.minY(), outline.maxX(), outline.maxY());
    return pixels;
}

QRegion outlineChange(const OverlayScene &before, const OverlayScene &after,
                      const CanvasMeasure &canvas)
{
    if (before.outline == after.outline && before.antsPhase == after.antsPhase)
        return {};
    QRegion pixels;
    QRegion clearBefore;
    QRegion clearAfter;
    if (before.outline) {
        pixels += antsPixels(*before.outline, canvas);
        clearBefore = clearPixels(*before.outline, canvas);
    }
    if (after.outline) {
        pixels += antsPixels(*after.outline, canvas);
        clearAfter = clearPixels(*after.outline, canvas);
    }
    return pixels + clearBefore.xored(clearAfter);
}

/// Both, or the box around them where it is at most twice as large: that costs less than more
/// rectangles do.
QRegion together(const QRect &one, const QRect &other)
{
    const auto area = [](const QRect &rect) { return std::int64_t{rect.width()} * rect.height(); };
    const QRect box = one | other;
    return area(box) <= 2 * (area(one) + area(other)) ? QRegion(box) : QRegion(one) + other;
}

QRect labelPixels(const OverlayScene &scene, const CanvasMeasure &canvas)
{
    const auto background = scene.label ? scene.label->background() : std::nullopt;
    return background ? pixelsUnder(*background, canvas) : QRect();
}

QRect crossPixels(const OverlayScene &scene, const CanvasMeasure &canvas)
{
    if (!scene.pointer)
        return {};
    constexpr double reach = pointerlook::armEnd;
    return pixelsUnder(
        {{scene.pointer->x - reach, scene.pointer->y - reach}, {2 * reach, 2 * reach}}, canvas);
}

QRegion guidePixels(const OverlayScene &scene, const CanvasMeasure &canvas)
{
    if (!scene.pointer || scene.guideLines == GuideLines::Hidden)
        return {};
    const Point<Canvas> at = *scene.pointer;
    const double half = pointerlook::guideWidth / 2;
    return QRegion(pixelsUnder({{0, at.y - half}, {canvas.size.width, 2 * half}}, canvas))
        + pixelsUnder({{at.x - half, 0}, {2 * half, canvas.size.height}}, canvas);
}

QRegion joined(const DrawnPixels &pixels)
{
    QRegion all;
    for (const QRect &rect : pixels)
        all += rect;
    return all;
}

/// Marks come and go at the end of the list: those that both scenes begin with look the same.
QRegion annotationsChange(const OverlayScene &before, const OverlayScene &after)
{
    if (before.annotations.isSharedWith(after.annotations))
        return {};
    const auto [gone, come] = std::ranges::mismatch(before.annotations, after.annotations, {},
                                                    &DrawnAnnotation::id, &DrawnAnnotation::id);
    QRegion pixels;
    for (const DrawnAnnotation &mark : std::ranges::subrange(gone, before.annotations.cend()))
        pixels += joined(mark.pixels);
    for (const DrawnAnnotation &mark : std::ranges::subrange(come, after.annotations.cend()))
        pixels += joined(mark.pixels);
    return pixels;
}

QRegion inProgressChange(const OverlayScene &before, const OverlayScene &after)
{
    const auto &earlier = before.inProgress;
    const auto &later = after.inProgress;
    const bool isSame = earlier && later && earlier->id == later->id;
    if (isSame && earlier->revision == later->revision)
        return {};
    if (isSame && earlier->revision + 1 == later->revision)
        return joined(later->lastChange);
    QRegion pixels;
    if (earlier)
        pixels += joined(earlier->pixels);
    if (later)
        pixels += joined(later->pixels);
    return pixels;
}

QRect allPixels(const CanvasMeasure &canvas)
{
    return {0, 0, static_cast<int>(std::lround(canvas.size.width * canvas.scale)),
            static_cast<int>(std::lround(canvas.size.height * canvas.scale))};
}

} // namespace

QRect pixelsUnder(const Rect<Canvas> &area, const CanvasMeasure &canvas)
{
    const int left = toPixel(std::floor(area.minX() * canvas.scale));
    const int right = toPixel(std::ceil(area.maxX() * canvas.scale));
    const int top = toPixel(std::floor((canvas.size.height - area.maxY()) * canvas.scale));
    const int bottom = toPixel(std::ceil((canvas.size.height - area.minY()) * canvas.scale));
    return {left, top, right - left, bottom - top};
}

DrawnPixels drawnPixels(const DrawnAreas &areas, const CanvasMeasure &canvas)
{
    DrawnPixels pixels;
    pixels.reserve(areas.size());
    for (const Rect<Canvas> &area : areas)
        pixels.push_back(pixelsUnder(area, canvas));
    return pixels;
}

QRect clearPixels(const Rect<Canvas> &outline, const CanvasMeasure &canvas)
{
    const auto nearest = [](double value) { return toPixel(std::round(value)); };
    const int left = nearest(outline.minX() * canvas.scale);
    const int right = nearest(outline.maxX() * canvas.scale);
    const int top = nearest((canvas.size.height - outline.maxY()) * canvas.scale);
    const int bottom = nearest((canvas.size.height - outline.minY()) * canvas.scale);
    return {left, top, right - left, bottom - top};
}

QRegion changedPixels(const OverlayScene &before, const OverlayScene &after,
                      const CanvasMeasure &canvas)
{
    QRegion pixels = outlineChange(before, after, canvas);
    pixels += annotationsChange(before, after);
    pixels += inProgressChange(before, after);
    if (before.label != after.label)
        pixels += together(labelPixels(before, canvas), labelPixels(after, canvas));
    if (before.pointer != after.pointer)
        pixels += together(crossPixels(before, canvas), crossPixels(after, canvas));
    if (before.pointer != after.pointer || before.guideLines != after.guideLines)
        pixels += guidePixels(before, canvas) + guidePixels(after, canvas);
    return pixels & allPixels(canvas);
}

} // namespace lumacap
