#include "overlay/MarchingAnts.h"

#include <algorithm>
#include <array>
#include <cmath>

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

/// One side of the way around: where it begins, its direction and its length.
struct Side {
    Point<Canvas> start;
    double directionX;
    double directionY;
    double length;
};

std::array<Side, 4> sidesOf(const Rect<Canvas> &rect)
{
    return {Side{{rect.minX(), rect.minY()}, 1, 0, rect.width()},
            Side{{rect.maxX(), rect.minY()}, 0, 1, rect.height()},
            Side{{rect.maxX(), rect.maxY()}, -1, 0, rect.width()},
            Side{{rect.minX(), rect.maxY()}, 0, -1, rect.height()}};
}

/// What the line covers from `from` to `to` along `side`. A dash that goes around a corner belongs
/// to both sides; the side it comes from covers the corner itself.
Rect<Canvas> covered(const Side &side, double from, double to, bool goesOn, bool comesAround)
{
    const double begin = comesAround ? reach : from;
    const double end = goesOn ? side.length + reach : to;
    const Point<Canvas> first{side.start.x + side.directionX * begin,
                              side.start.y + side.directionY * begin};
    const double length = end - begin;
    return Rect<Canvas>{
        {first.x - std::abs(side.directionY) * reach, first.y - std::abs(side.directionX) * reach},
        {side.directionX * length + std::abs(side.directionY) * look::lineWidth,
         side.directionY * length + std::abs(side.directionX) * look::lineWidth}}
        .standardized();
}

} // namespace

std::vector<Rect<Canvas>> antDashes(const Rect<Canvas> &rect, double phase)
{
    constexpr double period = look::dash + look::gap;
    std::vector<Rect<Canvas>> dashes;
    double walked = 0; // up to the side's start
    for (const Side &side : sidesOf(rect)) {
        const double offset = std::fmod(phase + walked, period);
        for (double start = -offset; start < side.length; start += period) {
            const double from = std::max(0.0, start);
            const double to = std::min(side.length, start + look::dash);
            if (to <= from)
                continue;
            const bool goesOn = start + look::dash > side.length;
            const bool comesAround = start < 0 && walked > 0;
            const Rect<Canvas> area = covered(side, from, to, goesOn, comesAround);
            if (area.width() > 0 && area.height() > 0)
                dashes.push_back(area);
        }
        walked += side.length;
    }
    return dashes;
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
