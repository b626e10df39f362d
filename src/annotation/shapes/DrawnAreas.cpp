#include "annotation/shapes/DrawnAreas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumacap {
namespace {

constexpr double longestSide =
    64; // canvas points: a slanted line in larger boxes fills much of them
constexpr double mostSteps = 512; // of one line: what is longer leaves every screen

/// What antialiasing adds at an edge, at any scale.
constexpr double fringe = 1;

/// Takes in the way point by point, and begins a new box where the last would grow too large.
class Boxes {
public:
    Boxes(Point<Canvas> start, double reach)
        : m_low{start}
        , m_high{start}
        , m_last{start}
        , m_reach{reach}
    {
    }

    void lineTo(Point<Canvas> end)
    {
        const Point<Canvas> start = m_last;
        const double length = std::max(std::abs(end.x - start.x), std::abs(end.y - start.y));
        const double steps = std::clamp(std::ceil(length / longestSide), 1.0, mostSteps);
        for (double step = 1; step <= steps; ++step) {
            const double share = step / steps;
            take({start.x + (end.x - start.x) * share, start.y + (end.y - start.y) * share});
        }
    }

    DrawnAreas finished()
    {
        close();
        return std::move(m_boxes);
    }

private:
    void take(Point<Canvas> point)
    {
        const auto include = [&] {
            m_low = {std::min(m_low.x, point.x), std::min(m_low.y, point.y)};
            m_high = {std::max(m_high.x, point.x), std::max(m_high.y, point.y)};
        };
        const Point<Canvas> low = m_low;
        const Point<Canvas> high = m_high;
        include();
        if (m_high.x - m_low.x > longestSide || m_high.y - m_low.y > longestSide) {
            m_low = low;
            m_high = high;
            close();
            m_low = m_high = m_last;
            include();
        }
        m_last = point;
    }

    void close() { m_boxes.push_back(areaBetween(m_low, m_high, m_reach)); }

    Point<Canvas> m_low;
    Point<Canvas> m_high;
    Point<Canvas> m_last;
    double m_reach;
    DrawnAreas m_boxes;
};

} // namespace

Rect<Canvas> areaBetween(Point<Canvas> one, Point<Canvas> other, double reach)
{
    return Rect<Canvas>{one, other - one}.inset(-reach - fringe);
}

DrawnAreas areasAlong(std::span<const Point<Canvas>> points, double reach)
{
    if (points.empty())
        return {};
    Boxes boxes(points.front(), reach);
    for (const Point<Canvas> point : points.subspan(1))
        boxes.lineTo(point);
    return boxes.finished();
}

DrawnAreas areasAround(const Rect<Canvas> &rect, double reach)
{
    const std::array<Point<Canvas>, 4> corners{{{rect.minX(), rect.minY()},
                                                {rect.maxX(), rect.minY()},
                                                {rect.maxX(), rect.maxY()},
                                                {rect.minX(), rect.maxY()}}};
    DrawnAreas sides;
    sides.reserve(corners.size());
    for (std::size_t side = 0; side < corners.size(); ++side)
        sides.push_back(
            areaBetween(corners.at(side), corners.at((side + 1) % corners.size()), reach));
    return sides;
}

DrawnAreas joined(DrawnAreas some, const DrawnAreas &others)
{
    some.insert(some.end(), others.begin(), others.end());
    return some;
}

} // namespace lumacap
