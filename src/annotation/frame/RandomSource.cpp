#include "annotation/frame/RandomSource.h"

#include <algorithm>

namespace lumacap {
namespace {

std::mt19937_64 freshEngine()
{
    std::random_device system;
    std::seed_seq seed{system(), system(), system(), system()};
    return std::mt19937_64{seed};
}

} // namespace

SystemRandom::SystemRandom()
    : m_engine{freshEngine()}
{
}

double SystemRandom::draw(double lower, double upper)
{
    // As many bits as a double holds; divided by the largest, so that both ends are reached.
    constexpr std::uint64_t largest = (std::uint64_t{1} << 53) - 1;
    const double share = static_cast<double>(m_engine() >> 11) / static_cast<double>(largest);
    return std::min(upper, lower + (upper - lower) * share);
}

} // namespace lumacap
