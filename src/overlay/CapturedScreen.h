#pragma once

#include "graphics/Geometry.h"

#include <QSize>

namespace lumacap {

/// The screen that a selection is made on, and how its canvas lies in global space.
struct CapturedScreen {
    Rect<Global> frame;
    /// Device pixels a canvas point.
    int scale = 1;
    /// Of the frozen image, in device pixels.
    QSize pixelSize;
    /// Of the first screen, in global units: what window lists count down from.
    double firstScreenHeight = 0;
    /// How many device pixels before the right and the lower edge the pointer is stopped.
    double pointerStep = 1;

    /// The canvas in points: the pixels divided by the scale.
    Rect<Canvas> bounds() const
    {
        return {{0, 0},
                {static_cast<double>(pixelSize.width()) / scale,
                 static_cast<double>(pixelSize.height()) / scale}};
    }

    Point<Canvas> toCanvas(Point<Global> point) const
    {
        return {(point.x - frame.minX()) * pointsAUnitX(),
                (point.y - frame.minY()) * pointsAUnitY()};
    }
    Rect<Canvas> toCanvas(const Rect<Global> &rect) const
    {
        return {toCanvas(rect.origin),
                {rect.size.width * pointsAUnitX(), rect.size.height * pointsAUnitY()}};
    }
    Point<Global> toGlobal(Point<Canvas> point) const
    {
        return {frame.minX() + point.x / pointsAUnitX(), frame.minY() + point.y / pointsAUnitY()};
    }

private:
    // 1 but for screens whose density differs from that of the first.
    double pointsAUnitX() const { return bounds().width() / frame.width(); }
    double pointsAUnitY() const { return bounds().height() / frame.height(); }
};

} // namespace lumacap
