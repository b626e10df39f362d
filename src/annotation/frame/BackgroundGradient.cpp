#include "annotation/frame/BackgroundGradient.h"

#include "annotation/frame/DominantColor.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>

namespace lumacap {
namespace {

namespace look {
constexpr GradientColors withoutColor{{0.93, 0.45, 0.28}, {0.65, 0.25, 0.72}};
constexpr GradientColors behindBrightGrey{{0.2, 0.15, 0.55}, {0.1, 0.45, 0.55}};
constexpr GradientColors behindDarkGrey{{0.95, 0.55, 0.35}, {0.7, 0.3, 0.75}};
constexpr double brightAbove = 0.55; // brightness, 0 to 1
constexpr double greyBelow = 0.15; // saturation, 0 to 1
constexpr double nothing = 0.001; // a component or a difference this small counts as none
constexpr double firstHueStep = 0.42; // of the colour wheel
constexpr double secondHueStep = 0.58;
} // namespace look

/// Each from 0 to 1, the hue below 1.
struct Hsb {
    double hue;
    double saturation;
    double brightness;
};

double hueOf(const Rgb &color, double largest, double delta)
{
    if (delta <= look::nothing)
        return 0;
    double sixths = 0;
    if (largest == color.red)
        sixths = std::fmod((color.green - color.blue) / delta, 6);
    else if (largest == color.green)
        sixths = (color.blue - color.red) / delta + 2;
    else
        sixths = (color.red - color.green) / delta + 4;
    const double hue = sixths / 6;
    return hue < 0 ? hue + 1 : hue;
}

/// A colour as good as black has no saturation.
Hsb hsbOf(const Rgb &color)
{
    const double largest = std::max({color.red, color.green, color.blue});
    const double delta = largest - std::min({color.red, color.green, color.blue});
    return {.hue = hueOf(color, largest, delta),
            .saturation = largest > look::nothing ? delta / largest : 0,
            .brightness = largest};
}

double aroundTheWheel(double hue, double step)
{
    const double turned = hue + step;
    return turned > 1 ? turned - 1 : turned;
}

} // namespace

Rgb hsbToRGB(double hue, double saturation, double brightness)
{
    const double chroma = brightness * saturation;
    const double second = chroma * (1 - std::abs(std::fmod(6 * hue, 2) - 1));
    const double least = brightness - chroma;
    const std::array<Rgb, 6> sectors{{{chroma, second, 0},
                                      {second, chroma, 0},
                                      {0, chroma, second},
                                      {0, second, chroma},
                                      {second, 0, chroma},
                                      {chroma, 0, second}}};
    const Rgb &color = sectors.at(static_cast<std::size_t>(6 * hue) % sectors.size());
    return {color.red + least, color.green + least, color.blue + least};
}

GradientColors contrastingGradientColors(std::span<const double> components)
{
    if (components.size() < 3)
        return look::withoutColor;
    const auto [hue, saturation, brightness] = hsbOf({components[0], components[1], components[2]});
    const bool isBright = brightness > look::brightAbove;
    if (saturation < look::greyBelow)
        return isBright ? look::behindBrightGrey : look::behindDarkGrey;
    const double firstSaturation = saturation <= 0.5 ? 0.6 : std::min(saturation + 0.1, 0.8);
    const double secondSaturation = std::clamp(saturation, 0.5, 0.7);
    return {
        hsbToRGB(aroundTheWheel(hue, look::firstHueStep), firstSaturation, isBright ? 0.4 : 0.6),
        hsbToRGB(aroundTheWheel(hue, look::secondHueStep), secondSaturation,
                 isBright ? 0.65 : 0.85)};
}

std::optional<GradientColors> gradientColors(FrameBackgroundStyle style, const QImage &baseImage)
{
    if (style != FrameBackgroundStyle::DominantColor)
        return rowOf(frameBackgroundStyles, style).gradient;
    const Rgb dominant = extractDominantColor(baseImage);
    return contrastingGradientColors(std::array{dominant.red, dominant.green, dominant.blue});
}

} // namespace lumacap
