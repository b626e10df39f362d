#pragma once

#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "graphics/Rgb.h"

#include <optional>
#include <span>

class QImage;

namespace lumacap {

/// The colour of a hue, a saturation and a brightness, each from 0 to 1.
Rgb hsbToRGB(double hue, double saturation, double brightness);

/// Two hues from the far side of the colour wheel, darker behind a bright colour and lighter behind
/// a dark one. `components` are red, green and blue from 0 to 1; what follows them is not looked
/// at, and fewer than three give a fixed pair.
GradientColors contrastingGradientColors(std::span<const double> components);

/// The colours behind a framed picture, the first for the top left, the second for the bottom
/// right; none for the newspaper, which has no gradient.
std::optional<GradientColors> gradientColors(FrameBackgroundStyle style, const QImage &baseImage);

} // namespace lumacap
