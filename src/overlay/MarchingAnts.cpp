#include "overlay/MarchingAnts.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr double lineWidth = 1.5;
constexpr double dash = 6;
constexpr double gap = 4;
constexpr double phaseStep = 1;
constexpr double lastPhase = 16;
} // namespace look

constexpr double reach = look::lineWidth / 2;

/// One side of the way around.
struct Side {
    double start;
    double direction; ///< 1 or -1
    double length;
    double across; ///< where it is in the other direction
};

constexpr double period = look::dash + look::gap;

/// What the dashes cover along `side`, of whose way around `walked` points came before, where that
/// may be `visible`. A dash that goes around a corner belongs to both sides; the side it comes from
/// covers the corner itself.
std::vector<Interval> dashesAlong(const Side &side, double walked, double phase,
                                  const Interval &visible)
{
    const double nearEdge = side.direction > 0 ? visible.from : visible.to;
    const double leftOut = (nearEdge - side.start) * side.direction - period;
    const double first =
        -std::fmod(phase + walked, period) + std::max(0.0, std::floor(leftOut / period)) * period;
    // Counted, as a side may be so long that a period more is no step.
    const auto most = static_cast<int>((visible.to - visible.from) / period) + 4;
    std::vector<Interval> dashes;
    for (int number = 0; number < most; ++number) {
        const double at = first + number * period;
        const double end = at + look::dash;
        const bool comesAround = at < 0 && walked > 0;
        if (std::min(side.length, end) <= (comesAround ? reach : std::max(0.0, at)))
            continue;
        const double from = comesAround ? reach : std::max(0.0, at);
        const double to = end > side.length ? side.length + reach : end;
        dashes.push_back({side.start + side.direction * from, side.start + side.direction * to});
    }
    return dashes;
}

std::vector<Interval> thickness(const Side &side)
{
    return {{side.across - reach, side.across + reach}};
}

} // namespace

std::array<RectGrid, 4> antDashes(const Rect<Canvas> &rect, double phase, Size canvas)
{
    const Interval across{0, canvas.width};
    const Interval upward{0, canvas.height};
    const Side lower{rect.minX(), 1, rect.width(), rect.minY()};
    const Side right{rect.minY(), 1, rect.height(), rect.maxX()};
    const Side upper{rect.maxX(), -1, rect.width(), rect.maxY()};
    const Side left{rect.maxY(), -1, rect.height(), rect.minX()};
    const double half = rect.width() + rect.height();
    return {RectGrid{dashesAlong(lower, 0, phase, across), thickness(lower)},
            RectGrid{thickness(right), dashesAlong(right, rect.width(), phase, upward)},
            RectGrid{dashesAlong(upper, half, phase, across), thickness(upper)},
            RectGrid{thickness(left), dashesAlong(left, half + rect.width(), phase, upward)}};
}

double nextAntsPhase(double phase)
{
    const double next = phase + look::phaseStep;
    return next > look::lastPhase ? 0 : next;
}

double antsReach()
{
    return reach;
}

} // namespace lumacap
