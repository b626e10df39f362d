#include "platform/pixels/PixelFormat.h"

#include <cstddef>
#include <span>

namespace lumacap {

QImage opaqueImage(QImage picture, const PixelFormat &format)
{
    if (format.unusedBits != 0) {
        // A copy of each bound: asked of the image for every pixel it costs thirty times as much.
        const std::uint32_t unusedBits = format.unusedBits;
        const auto width = static_cast<std::size_t>(picture.width());
        const int height = picture.height();
        for (int y = 0; y < height; ++y) {
            auto *const row = reinterpret_cast<std::uint32_t *>(picture.scanLine(y));
            for (std::uint32_t &pixel : std::span(row, width))
                pixel |= unusedBits;
        }
    }
    // With its fourth byte set, an opaque pixel is the same in both formats.
    if (picture.format() == QImage::Format_RGB32)
        picture.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    else
        picture.convertTo(QImage::Format_ARGB32_Premultiplied);
    return picture;
}

} // namespace lumacap
