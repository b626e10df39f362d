#pragma once

#include "graphics/Rgb.h"

#include <QImage>

#include <array>
#include <cmath>
#include <cstdlib>
#include <random>

namespace lumacap {

/// The colour of `above` at `alpha` over `beneath`, as levels from 0 to 255, not rounded.
inline std::array<double, 3> levelsOver(const Rgb &beneath, const Rgb &above = {}, double alpha = 0)
{
    const auto level = [=](double below, double over) {
        return 255 * (below * (1 - alpha) + over * alpha);
    };
    return {level(beneath.red, above.red), level(beneath.green, above.green),
            level(beneath.blue, above.blue)};
}

/// How far the worst of the three channels of an opaque pixel is from `levels`.
inline double distance(QRgb pixel, const std::array<double, 3> &levels)
{
    return std::max({std::abs(qRed(pixel) - levels[0]), std::abs(qGreen(pixel) - levels[1]),
                     std::abs(qBlue(pixel) - levels[2])});
}

inline QImage filled(int width, int height, QRgb color)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

/// Opaque pixels of which no two neighbours are alike.
inline QImage noise(int width, int height)
{
    std::mt19937 engine(static_cast<unsigned>(width * 31 + height));
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, 0xff000000U | (engine() & 0xffffffU));
    }
    return image;
}

} // namespace lumacap
