#pragma once

#include "graphics/EnumTable.h"

namespace lumacap {

/// The width of strokes, in the order of the toolbar's bars.
enum class LineThickness { Thin, Medium, Thick };

struct LineThicknessRow {
    LineThickness value;
    /// In canvas points.
    double rawValue;
};

inline constexpr std::array lineThicknesses{
    LineThicknessRow{LineThickness::Thin, 2},
    LineThicknessRow{LineThickness::Medium, 4},
    LineThicknessRow{LineThickness::Thick, 6},
};
static_assert(rowsFollowTheEnum(lineThicknesses));

} // namespace lumacap
