#pragma once

#include <QImage>

#include <cstdint>

namespace lumacap {

/// How a desktop's pixels lie in memory.
struct PixelFormat {
    QImage::Format format = QImage::Format_Invalid;
    int bitsPerPixel = 0;
    /// The bits of a 32-bit pixel that hold no colour; desktops leave them as they like. None in
    /// pixels of other sizes.
    std::uint32_t unusedBits = 0;

    friend bool operator==(const PixelFormat &, const PixelFormat &) = default;
};

/// The picture as `Format_ARGB32_Premultiplied`, opaque. One that is of 32 bits a pixel already is
/// changed in place, in its own memory.
QImage opaqueImage(QImage picture, const PixelFormat &format);

} // namespace lumacap
