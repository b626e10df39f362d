#include "graphics/ColorMixing.h"

namespace lumacap {

QColor translucent(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto channel = [share](float a, float b) {
        return static_cast<float>(a + (b - a) * share);
    };
    return QColor::fromRgbF(channel(first.redF(), second.redF()),
                            channel(first.greenF(), second.greenF()),
                            channel(first.blueF(), second.blueF()));
}

} // namespace lumacap
