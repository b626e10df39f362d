#pragma once

#include "capture/encoding/PngRows.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QSize>

#include <span>

namespace lumacap {

/// A part of the picture's deflate stream, with what the whole file needs to know of it.
struct PngStrip {
    QByteArray deflated;
    /// CRC-32 of `deflated`.
    quint32 crc = 0;
    /// Adler-32 of the filtered rows, and how many bytes they are.
    quint32 adler = 0;
    std::size_t filteredSize = 0;
};

/// The file of a picture of `size` whose strips, top to bottom, make up one raw deflate stream. The
/// strips' checksums are joined, so that no byte is summed twice. Fails where a strip is larger
/// than a chunk may be.
Result<QByteArray> joinedPngFile(QSize size, PngPixels pixels, std::span<const PngStrip> strips);

} // namespace lumacap
