#pragma once

#include <QRectF>

#include <vector>

class QPainter;
class QRect;

namespace lumacap {

class Backdrop;
struct ToolbarTheme;

/// Paints what lies under the controls: the material in its rounded shape, its border and the
/// dividers, which are in points. `strip` is in the painter's units, `unitsAPoint` of which make a
/// point.
void paintStrip(QPainter &painter, const QRect &strip, double unitsAPoint,
                const std::vector<QRectF> &dividers, Backdrop &backdrop, const ToolbarTheme &theme);

} // namespace lumacap
