#pragma once

#include "graphics/EnumTable.h"

#include <QString>

namespace lumacap {

/// How many times a loupe enlarges, in the order of the toolbar's buttons.
enum class MagnifierZoom { X2, X3, X4 };

struct MagnifierZoomRow {
    MagnifierZoom value;
    double rawValue;
};

inline constexpr std::array magnifierZooms{
    MagnifierZoomRow{MagnifierZoom::X2, 2},
    MagnifierZoomRow{MagnifierZoom::X3, 3},
    MagnifierZoomRow{MagnifierZoom::X4, 4},
};
static_assert(rowsFollowTheEnum(magnifierZooms));

/// "2x" for any factor from 2 up to 3; "0x" for what is no factor.
inline QString zoomLabel(double factor)
{
    constexpr double most = 1000;
    return QString::number(factor >= 0 && factor < most ? static_cast<int>(factor) : 0) + u'x';
}

inline QString label(MagnifierZoom zoom)
{
    return zoomLabel(rowOf(magnifierZooms, zoom).rawValue);
}

} // namespace lumacap
