#pragma once

#include <QRgb>

#include <cstdint>

namespace lumacap {

/// The weight that leaves nothing of the pixel beneath.
inline constexpr std::uint32_t wholeWeight = 1U << 16;

/// `share` from 0 to 1 as a weight for `mixed`.
inline std::uint32_t weightOf(double share)
{
    constexpr double half = 0.5;
    return static_cast<std::uint32_t>(share * wholeWeight + half);
}

/// The premultiplied pixel that `weight` of 65536 lies from `beneath` to `above`, every channel
/// rounded: what a shape of the colour `above` leaves where it covers that much of a pixel.
inline QRgb mixed(QRgb beneath, QRgb above, std::uint32_t weight)
{
    const auto channel = [=](unsigned shift) {
        const std::uint32_t sum = ((beneath >> shift) & 0xffU) * (wholeWeight - weight)
            + ((above >> shift) & 0xffU) * weight;
        return ((sum + wholeWeight / 2) >> 16) << shift;
    };
    return channel(0) | channel(8) | channel(16) | channel(24);
}

} // namespace lumacap
