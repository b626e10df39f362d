#pragma once

#include <algorithm>

namespace lumacap {

// The coordinate spaces. They are types, so that mixing two of them does not compile.

/// The desktop's own units, origin at the bottom left of the first screen, y up.
struct Global;
/// Device pixels, origin at the top left, y down.
struct Pixel;

template <class Space>
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point &, const Point &) = default;
};

/// A width and a height; both may be negative while a rectangle is being dragged.
struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size &, const Size &) = default;
};

/// An origin and a size. Either side may be negative; `minX` … `maxY` look at the standardized
/// rectangle.
template <class Space>
struct Rect {
    Point<Space> origin;
    Size size;

    double minX() const { return std::min(origin.x, origin.x + size.width); }
    double maxX() const { return std::max(origin.x, origin.x + size.width); }
    double midX() const { return origin.x + size.width / 2; }
    double minY() const { return std::min(origin.y, origin.y + size.height); }
    double maxY() const { return std::max(origin.y, origin.y + size.height); }
    double midY() const { return origin.y + size.height / 2; }

    /// Half open: the edges at `minX` and `minY` belong to the rectangle, those at `maxX` and
    /// `maxY` do not.
    bool contains(Point<Space> point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

} // namespace lumacap
