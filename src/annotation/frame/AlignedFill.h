#pragma once

#include "graphics/Geometry.h"
#include "graphics/Rgb.h"

#include <QImage>
#include <QRect>

namespace lumacap {

/// Fills upright rectangles straight into a picture, every pixel by the very share of it that a
/// rectangle covers. A newspaper page is some hundred thousand of them, for which a painter's own
/// cost per rectangle is too much.
class AlignedFill {
public:
    /// `picture` is 32 bits a pixel with premultiplied alpha, shows the canvas from its lower left
    /// corner on at `scale` pixels a point, and outlives the object. What lies wholly in `hidden`
    /// (pixels) may be left out, for something opaque will be painted over it.
    AlignedFill(QImage &picture, double scale, const QRect &hidden);

    /// Fills every pixel that isn't hidden.
    void fillEverything(const Rgb &color);

    /// Fills the part of `rect` that lies in the picture.
    void fill(const Rect<Canvas> &rect, const Rgb &color, double alpha);

private:
    QImage &m_picture;
    double m_scale; ///< pixels a point
    QRect m_hidden;
};

} // namespace lumacap
