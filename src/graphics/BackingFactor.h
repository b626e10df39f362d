#pragma once

#include <algorithm>
#include <cmath>

namespace lumacap {

/// The whole number of device pixels a point: the desktop's scale rounded to the nearest whole
/// number, halves up, at least 1 (1.25 gives 1, 1.5 gives 2).
inline double backingFactor(double desktopScale)
{
    return std::max(1.0, std::floor(desktopScale + 0.5));
}

} // namespace lumacap
