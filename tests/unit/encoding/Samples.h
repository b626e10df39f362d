#pragma once

#include <QImage>

#include <cstdint>

namespace lumacap::samples {

/// What is in a made-up picture. The encoders treat them differently.
enum class Content { Noise, GrainyGradient, Flat, Letters };

enum class Alpha { Opaque, Translucent };

/// A made-up premultiplied picture; the same for the same arguments.
QImage sample(QSize size, Content content, Alpha alpha, std::uint32_t seed = 1);

/// The same pixels in an image whose rows lie `extraBytes` (a multiple of 4) further apart than
/// they need, with rubbish between them.
QImage withWideRows(const QImage &image, int extraBytes);

/// The pixels as PNG and TIFF store them, rows without gaps: RGB of an opaque picture, else RGBA.
QByteArray storedPixels(const QImage &premultiplied, Alpha alpha);

} // namespace lumacap::samples
