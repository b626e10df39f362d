#pragma once

#include <QImage>

#include <span>

namespace lumacap {

/// `image` as ARGB32_Premultiplied: the same pixels shared where it has that format already; null
/// where `image` is null or memory ran out.
QImage premultipliedPixels(const QImage &image);

/// One row of a premultiplied image, left to right, 0xAARRGGBB a pixel. Valid as long as `image`
/// is.
std::span<const QRgb> pixelRow(const QImage &image, int row);

/// Whether every pixel of `row` is opaque.
bool isOpaqueRow(std::span<const QRgb> row);

/// Whether every pixel of a premultiplied image is opaque; stops at the first row that is not.
bool isOpaque(const QImage &premultiplied);

/// Writes the colours of opaque pixels as bytes red, green, blue. `rgb` holds three bytes a pixel.
void packRgb(std::span<const QRgb> row, std::span<uchar> rgb);

/// Writes one row of a premultiplied image as bytes red, green, blue, alpha, not premultiplied,
/// exactly as QImage::convertToFormat(QImage::Format_RGBA8888) does. `rgba` holds four bytes a
/// pixel.
void packRgba(const QImage &premultiplied, int row, std::span<uchar> rgba);

} // namespace lumacap
