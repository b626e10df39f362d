#pragma once

#include "annotation/frame/RandomSource.h"

#include <functional>
#include <ostream>
#include <utility>
#include <vector>

namespace lumacap {

struct AskedRange {
    double lower;
    double upper;

    /// Sums taken in another order may differ in their last bits.
    friend bool operator==(const AskedRange &one, const AskedRange &other)
    {
        constexpr double lastBits = 1e-9;
        return std::abs(one.lower - other.lower) < lastBits
            && std::abs(one.upper - other.upper) < lastBits;
    }
    friend std::ostream &operator<<(std::ostream &stream, const AskedRange &range)
    {
        return stream << range.lower << "..." << range.upper;
    }
};

/// Answers what a test says and remembers what it was asked.
class ScriptedRandom final : public RandomSource {
public:
    using Answer = std::function<double(const AskedRange &range, std::size_t index)>;

    explicit ScriptedRandom(Answer answer)
        : m_answer{std::move(answer)}
    {
    }

    const std::vector<AskedRange> &asked() const { return m_asked; }

private:
    double draw(double lower, double upper) override
    {
        m_asked.push_back({lower, upper});
        return m_answer(m_asked.back(), m_asked.size() - 1);
    }

    Answer m_answer;
    std::vector<AskedRange> m_asked;
};

inline double lowerEnd(const AskedRange &range, std::size_t /*index*/)
{
    return range.lower;
}

inline double upperEnd(const AskedRange &range, std::size_t /*index*/)
{
    return range.upper;
}

/// The same numbers for the same seed.
inline ScriptedRandom::Answer seeded(unsigned seed)
{
    return [engine = std::mt19937(seed)](const AskedRange &range, std::size_t) mutable {
        return std::uniform_real_distribution<double>(range.lower, range.upper)(engine);
    };
}

} // namespace lumacap
