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

/// What the dashes cover along `side`, of whose way around `walked` points came before. A dash that
/// goes around a corner belongs to both sides; the side it comes from covers the corner itself.
std::vector<Interval> dashesAlong(const Side &side, double walked, double phase)
{
    constexpr double period = look::dash + look::gap;
    std::vector<Interval> dashes;
    for (double at = -std::fmod(phase + walked, period); at < side.length; at += period) {
        const double end = at + look::dash;
        if (std::min(side.length, end) <= std::max(0.0, at))
            continue;
        const bool comesAround = at < 0 && walked > 0;
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

std::array<RectGrid, 4> antDashes(const Rect<Canvas> &rect, double phase)
{
    const Side lower{rect.minX(), 1, rect.width(), rect.minY()};
    const Side right{rect.minY(), 1, rect.height(), rect.maxX()};
    const Side upper{rect.maxX(), -1, rect.width(), rect.maxY()};
    const Side left{rect.maxY(), -1, rect.height(), rect.minX()};
    const double half = rect.width() + rect.height();
    return {RectGrid{dashesAlong(lower, 0, phase), thickness(lower)},
            RectGrid{thickness(right), dashesAlong(right, rect.width(), phase)},
            RectGrid{dashesAlong(upper, half, phase), thickness(upper)},
            RectGrid{thickness(left), dashesAlong(left, half + rect.width(), phase)}};
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
