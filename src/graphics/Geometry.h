#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

namespace lumacap {

// The coordinate spaces. They are types, so that mixing two of them does not compile.

/// The desktop's own units, origin at the bottom left of the first screen, y up.
struct Global;
/// The units of Global, origin at the top left of the first screen, y down: how desktops list
/// windows.
struct TopLeftGlobal;
/// Points of the captured display, origin at its lower left, y up: where annotations live.
struct Canvas;
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

/// The way from `start` to `end`.
template <class Space>
Size operator-(Point<Space> end, Point<Space> start)
{
    return {end.x - start.x, end.y - start.y};
}

template <class Space>
Point<Space> operator-(Point<Space> point, Size way)
{
    return {point.x - way.width, point.y - way.height};
}

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

    double width() const { return std::abs(size.width); }
    double height() const { return std::abs(size.height); }
    Point<Space> center() const { return {midX(), midY()}; }

    /// The same area with its origin at `minX`, `minY` and no negative side.
    Rect standardized() const { return {{minX(), minY()}, {width(), height()}}; }

    /// The area both share, standardized; nothing when they share none.
    std::optional<Rect> intersection(const Rect &other) const
    {
        const Point<Space> low{std::max(minX(), other.minX()), std::max(minY(), other.minY())};
        const Point<Space> high{std::min(maxX(), other.maxX()), std::min(maxY(), other.maxY())};
        if (!(low.x < high.x && low.y < high.y))
            return std::nullopt;
        return Rect{low, {high.x - low.x, high.y - low.y}};
    }

    /// Every edge moved inward by `distance`, outward where that is negative. A side shorter than
    /// twice the distance comes out negative.
    Rect inset(double distance) const
    {
        return {{minX() + distance, minY() + distance},
                {width() - 2 * distance, height() - 2 * distance}};
    }

    /// Half open: the edges at `minX` and `minY` belong to the rectangle, those at `maxX` and
    /// `maxY` do not.
    bool contains(Point<Space> point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

/// The same place counted from the other end of the first screen, which is `height` high.
inline Point<TopLeftGlobal> toTopLeftGlobal(Point<Global> point, double height)
{
    return {point.x, height - point.y};
}

inline Rect<Global> toGlobal(const Rect<TopLeftGlobal> &rect, double height)
{
    return {{rect.minX(), height - rect.maxY()}, {rect.width(), rect.height()}};
}

template <class Space>
bool isFinite(Point<Space> point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Whether all four edges are numbers.
template <class Space>
bool isFinite(const Rect<Space> &rect)
{
    return isFinite(rect.origin) && std::isfinite(rect.origin.x + rect.size.width)
        && std::isfinite(rect.origin.y + rect.size.height);
}

} // namespace lumacap
