#pragma once

#include "graphics/Geometry.h"

#include <QRectF>

#include <optional>
#include <span>
#include <vector>

namespace lumacap {

/// A divider stands between two groups of controls.
enum class RowItemKind { Control, Divider };

struct RowItem {
    RowItemKind kind;
    Size size;
};

/// Where the items of a strip lie, in their unit, y down from the upper left corner of all rows.
struct RowPlacement {
    /// In the order of the items; none for a divider that would stand at the end of a row.
    std::vector<std::optional<QRectF>> frames;
    /// Of all rows together.
    Size size;
};

/// Lays the items side by side, `spacing` apart and halfway up their row, in as few rows as `width`
/// takes, `spacing` apart and each as high as the highest item, and those as even as can be. A row
/// ends between two groups, inside one only where that alone is wider than `width`. An item that is
/// wider still lies in a row of its own. Given the width it answered, it answers the same again.
RowPlacement placedInRows(std::span<const RowItem> items, double width, double spacing);

} // namespace lumacap
