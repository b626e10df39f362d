#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <optional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// How the server's pixels of one depth lie in memory.
struct PixelFormat {
    QImage::Format format = QImage::Format_Invalid;
    int bitsPerPixel = 0;
    /// The bits of a 32-bit pixel that hold no colour; servers leave them as they like. None in
    /// smaller pixels.
    std::uint32_t unusedBits = 0;
    /// Rows are padded to whole 32-bit words.
    qsizetype bytesPerLine(int width) const;
};

/// The format of pictures of the root window; nothing for one this program can't read.
std::optional<PixelFormat> rootPixelFormat(const xcb::Connection &connection);

/// The picture as `Format_ARGB32_Premultiplied`, opaque. One that is of 32 bits a pixel already is
/// changed in place, in its own memory.
QImage opaqueImage(QImage picture, const PixelFormat &format);

} // namespace lumacap::x11
