#pragma once

#include <QString>

#include <expected>
#include <utility>

namespace lumacap {

/// Why an operation came to nothing, in plain words for the person who asked for it.
struct Failure {
    QString description;

    friend bool operator==(const Failure &, const Failure &) = default;
};

template <class T>
using Result = std::expected<T, Failure>;

/// `return failure(…)` from an operation that answers a Result.
inline std::unexpected<Failure> failure(QString description)
{
    return std::unexpected(Failure{std::move(description)});
}

} // namespace lumacap
