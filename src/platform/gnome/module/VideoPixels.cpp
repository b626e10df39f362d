#include "platform/gnome/module/VideoPixels.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace lumacap::gnome {

namespace {

constexpr std::size_t pixelBytes = 4;
constexpr std::uint32_t opaque = 0xff000000;

std::uint32_t loaded(const std::byte *bytes)
{
    return qFromLittleEndian<std::uint32_t>(bytes);
}

std::uint32_t fromBlueGreenRed(const std::byte *bytes)
{
    return loaded(bytes) | opaque;
}

std::uint32_t fromRedGreenBlue(const std::byte *bytes)
{
    const std::uint32_t pixel = loaded(bytes);
    return opaque | (pixel & 0xff00) | ((pixel & 0xff) << 16) | ((pixel >> 16) & 0xff);
}

template <auto convert>
void convertRow(const std::byte *source, std::span<std::uint32_t> row)
{
    for (std::uint32_t &pixel : row) {
        pixel = convert(source);
        source += pixelBytes;
    }
}

} // namespace

std::optional<QImage> pictureOf(std::span<const std::byte> bytes, std::int32_t stride,
                                const VideoFormat &format)
{
    if (format.size.isEmpty() || stride < 0)
        return std::nullopt;
    const auto width = static_cast<std::size_t>(format.size.width());
    const auto height = static_cast<std::size_t>(format.size.height());
    const auto step = static_cast<std::size_t>(stride);
    if (step < width * pixelBytes || bytes.size() < (step * (height - 1)) + (width * pixelBytes))
        return std::nullopt;
    QImage picture(format.size, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return std::nullopt;
    const auto convert = format.order == ByteOrder::BlueGreenRed ? &convertRow<fromBlueGreenRed>
                                                                 : &convertRow<fromRedGreenBlue>;
    for (int y = 0; y < format.size.height(); ++y) {
        auto *const row = reinterpret_cast<std::uint32_t *>(picture.scanLine(y));
        convert(bytes.data() + (static_cast<std::size_t>(y) * step), {row, width});
    }
    return picture;
}

} // namespace lumacap::gnome
