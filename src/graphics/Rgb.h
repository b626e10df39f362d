#pragma once

#include <QColor>

namespace lumacap {

/// An opaque colour of the screen's own space, each component from 0 to 1.
struct Rgb {
    double red = 0;
    double green = 0;
    double blue = 0;

    friend bool operator==(const Rgb &, const Rgb &) = default;
};

/// The colours at the two ends of a linear gradient.
struct GradientColors {
    Rgb first;
    Rgb second;

    friend bool operator==(const GradientColors &, const GradientColors &) = default;
};

inline QColor toQColor(const Rgb &color, double alpha = 1)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(alpha));
}

} // namespace lumacap
