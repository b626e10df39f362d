#pragma once

#include "graphics/EnumTable.h"

#include <QColor>
#include <QLatin1StringView>

namespace lumacap {

/// The colours of annotations, in the order of their swatches.
enum class AnnotationColor { Red, Orange, Yellow, Green, Blue, White, Black };

struct AnnotationColorRow {
    AnnotationColor value;
    QLatin1StringView rawValue;
    QRgb rgb;
};

inline constexpr std::array annotationColors{
    AnnotationColorRow{AnnotationColor::Red, QLatin1StringView("red"), qRgb(255, 59, 48)},
    AnnotationColorRow{AnnotationColor::Orange, QLatin1StringView("orange"), qRgb(255, 149, 0)},
    AnnotationColorRow{AnnotationColor::Yellow, QLatin1StringView("yellow"), qRgb(255, 204, 0)},
    AnnotationColorRow{AnnotationColor::Green, QLatin1StringView("green"), qRgb(52, 199, 89)},
    AnnotationColorRow{AnnotationColor::Blue, QLatin1StringView("blue"), qRgb(0, 122, 255)},
    AnnotationColorRow{AnnotationColor::White, QLatin1StringView("white"), qRgb(255, 255, 255)},
    AnnotationColorRow{AnnotationColor::Black, QLatin1StringView("black"), qRgb(0, 0, 0)},
};
static_assert(rowsFollowTheEnum(annotationColors));

/// The opaque colour that annotations are drawn with.
inline QColor nsColor(AnnotationColor color)
{
    return QColor::fromRgb(rowOf(annotationColors, color).rgb);
}

} // namespace lumacap
