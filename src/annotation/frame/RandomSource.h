#pragma once

#include "graphics/Fatal.h"

#include <cstdint>
#include <random>

namespace lumacap {

/// Where the newspaper page takes its chance from.
class RandomSource {
public:
    virtual ~RandomSource() = default;

    /// A number from `lower` to `upper`, each as likely as the next, both ends included. A range
    /// that ends below its start stops the program.
    double uniform(double lower, double upper)
    {
        if (!(lower <= upper))
            fatal("a random range must not end below its start");
        return draw(lower, upper);
    }

private:
    virtual double draw(double lower, double upper) = 0;
};

/// A different sequence for every object, begun from the system's random number generator.
class SystemRandom final : public RandomSource {
public:
    SystemRandom();

private:
    double draw(double lower, double upper) override;

    std::mt19937_64 m_engine;
};

} // namespace lumacap
