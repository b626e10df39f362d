#pragma once

#include "capture/encoding/Deflater.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QImage>

namespace lumacap {

/// How the work of one PNG file is done. None of it but the library and the strips changes a byte.
struct PngWork {
    DeflateLibrary library;
    /// Threads at work at the same time, the caller's among them; at least 1.
    int workers;
    /// Rows compressed on their own; at least 1.
    int rowsAStrip;
};

/// `image` as a PNG file in sRGB, without the time or anything else but its pixels: RGB where every
/// pixel is opaque, else RGBA. Strips of it are worked on side by side by threads that end before
/// this returns. Fails for a null image and where memory runs out.
Result<QByteArray> encodePng(const QImage &image);

/// The same with the work divided as told.
Result<QByteArray> encodePng(const QImage &image, const PngWork &work);

} // namespace lumacap
