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

/// Read by the rules of the format, one by one: signature, every chunk's checksum, one complete
/// zlib stream with nothing after it, and the filters undone. Empty where anything is not as it
/// must be.
std::optional<DecodedPng> decodedByTheRules(const QByteArray &file);

/// The names of the chunks in their order; empty where the file is not cut into chunks to its end.
QByteArrayList chunkNames(const QByteArray &file);

} // namespace lumacap::samples
