#pragma once

#include "graphics/EnumTable.h"

#include <QLatin1StringView>

namespace lumacap {

/// The outline of a loupe, in the order of the toolbar's buttons.
enum class MagnifierShape { Circle, RoundedRect, Rectangle };

struct MagnifierShapeRow {
    MagnifierShape value;
    QLatin1StringView rawValue;
    /// The name of the symbol image on its button: the plain rectangle stands for the rounded one,
    /// the upright one for the sharp one, so that the two can be told apart at that size.
    QLatin1StringView icon;
};

inline constexpr std::array magnifierShapes{
    MagnifierShapeRow{MagnifierShape::Circle, QLatin1StringView("circle"),
                      QLatin1StringView("circle")},
    MagnifierShapeRow{MagnifierShape::RoundedRect, QLatin1StringView("roundedRect"),
                      QLatin1StringView("rectangle")},
    MagnifierShapeRow{MagnifierShape::Rectangle, QLatin1StringView("rectangle"),
                      QLatin1StringView("rectangle.portrait")},
};
static_assert(rowsFollowTheEnum(magnifierShapes));

} // namespace lumacap
