#pragma once

#include "graphics/Geometry.h"

#include <QString>

#include <optional>

class QPainter;

namespace lumacap {

/// A few words under a rectangle.
struct OverlayLabel {
    QString text;
    Rect<Canvas> rect;

    friend bool operator==(const OverlayLabel &, const OverlayLabel &) = default;
};

/// "640 × 480": the whole points of a size, the rest cut off. A side that is no number ends the
/// program.
QString dimensionText(Size size);

/// The background of the label, in points; nothing where none is drawn, because its text is empty
/// or its rectangle is nowhere.
std::optional<Rect<Canvas>> labelBackground(const OverlayLabel &label);

/// Draws the label into a painter in canvas space.
void drawDimensionLabel(QPainter &context, const OverlayLabel &label);

} // namespace lumacap
