#pragma once

class QPainter;
class QRect;

namespace lumacap {

struct ToolbarTheme;

/// Paints the ground of a menu, its hairline and its shadow. `panel` is in the painter's units, of
/// which `unitsAPoint` make a point.
void paintMenuPanel(QPainter &painter, const QRect &panel, double unitsAPoint,
                    const ToolbarTheme &theme);

} // namespace lumacap
