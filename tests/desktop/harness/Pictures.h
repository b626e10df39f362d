#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

#include <cstdint>

namespace lumacap::harness {

/// A pointer's picture, with the pixel of it that points.
struct Cursor {
    /// Format_ARGB32_Premultiplied.
    QImage image;
    QPoint hotSpot;
};

/// Noise that no encoder can shorten and no two places of which are alike. Format_RGB32.
QImage noisePicture(const QSize &size, std::uint32_t seed = 1);
/// Slow colour changes, as in a photograph: what JPEG keeps nearly as it is. Format_RGB32.
QImage photographPicture(const QSize &size, std::uint32_t seed = 1);
/// An arrow-like shape of opaque pixels on nothing, hot spot away from its corner.
Cursor opaqueCursor();
/// Stripes of every transparency.
Cursor translucentCursor();

/// What a still of `area` of a screen showing `screen` with `cursor` at `pointer` (root pixels)
/// holds.
QImage expectedStill(const QImage &screen, const QRect &area, const Cursor &cursor,
                     const QPoint &pointer);

/// How many pixels of `seen` differ from `expected` by more than `levels` in any colour channel;
/// all of them when the sizes differ. Transparency does not count.
qsizetype differingPixels(const QImage &expected, const QImage &seen, int levels = 0);
/// The mean distance of the colour channels, in levels of 255; 255 when the sizes differ.
double meanDistance(const QImage &expected, const QImage &seen);

} // namespace lumacap::harness
