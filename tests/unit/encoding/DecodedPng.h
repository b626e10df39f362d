#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QSize>

#include <optional>

namespace lumacap::samples {

/// What a PNG file says. The pixels are rows without gaps, three or four bytes a pixel.
struct DecodedPng {
    QSize size;
    int channels = 0;
    QByteArray pixels;

    friend bool operator==(const DecodedPng &, const DecodedPng &) = default;
};

/// Read by libpng; empty where it refuses the file or warns about it.
std::optional<DecodedPng> decodedByLibpng(const QByteArray &file);

/// Read by LodePNG, which shares no code with zlib and libpng; empty where it refuses the file or
/// the colours are none of ours.
std::optional<DecodedPng> decodedByLodepng(const QByteArray &file);

/// Whether every chunk is as long and sums up as it says, and the data is one complete zlib stream
/// with nothing after it, which decoders forgive.
bool isWellFormed(const QByteArray &file);

/// The names of the chunks in their order; empty where the file is not cut into chunks to its end.
QByteArrayList chunkNames(const QByteArray &file);

} // namespace lumacap::samples
