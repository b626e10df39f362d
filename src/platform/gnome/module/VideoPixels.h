#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace lumacap::gnome {

/// Which byte of a pixel's four is which colour; the fourth is no colour.
enum class ByteOrder { BlueGreenRed, RedGreenBlue };

/// What the pixels of a stream are.
struct VideoFormat {
    QSize size;
    ByteOrder order = ByteOrder::BlueGreenRed;

    friend bool operator==(const VideoFormat &, const VideoFormat &) = default;
};

/// The picture in `bytes`, whose rows begin `stride` bytes apart: opaque
/// `Format_ARGB32_Premultiplied` in memory of its own. Nothing when they do not hold all of it, or
/// there is no memory.
std::optional<QImage> pictureOf(std::span<const std::byte> bytes, std::int32_t stride,
                                const VideoFormat &format);

} // namespace lumacap::gnome
