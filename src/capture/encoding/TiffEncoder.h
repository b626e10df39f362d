#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QImage>

namespace lumacap {

/// `image` as an uncompressed TIFF file: RGB of 8 bits where every pixel is opaque, else RGBA, not
/// premultiplied. Fails for a null image, for more than a TIFF file holds (4 GiB) and where memory
/// runs out.
Result<QByteArray> encodeTiff(const QImage &image);

} // namespace lumacap
