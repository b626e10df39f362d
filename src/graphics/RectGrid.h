#pragma once

#include <span>
#include <vector>

class QColor;
class QImage;
class QRegion;

namespace lumacap {

/// From one edge to the other, in either order, in canvas points; both finite.
struct Interval {
    double from = 0;
    double to = 0;

    friend bool operator==(const Interval &, const Interval &) = default;
};

/// Rectangles side by side and one above the other: each interval across with each one upward. The
/// intervals of one direction do not overlap.
struct RectGrid {
    std::vector<Interval> columns;
    std::vector<Interval> rows;
};

/// Fills the rectangles of all `grids`, inside `clip`, in a picture of the whole canvas at `scale`
/// pixels a point. The pixels are those of a painter that fills one path of all these rectangles,
/// whether they overlap or not, with soft edges; a painter, to whom they are any shape, takes many
/// times as long.
void fillGrids(QImage &target, double scale, std::span<const RectGrid> grids, const QColor &color,
               const QRegion &clip);

} // namespace lumacap
