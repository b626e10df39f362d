#pragma once

#include <chrono>
#include <functional>

namespace lumacap::harness {

/// How long a test waits for something that should happen soon; long, because machines are busy.
inline constexpr std::chrono::seconds usualLimit{20};

/// Asks `condition` again and again until it holds (true) or `limit` has passed (false).
[[nodiscard]] bool waitFor(const std::function<bool()> &condition,
                           std::chrono::milliseconds limit = usualLimit);

/// Waits like `waitFor`, and throws a `std::runtime_error` naming `what` when the limit passes.
void require(const char *what, const std::function<bool()> &condition,
             std::chrono::milliseconds limit = usualLimit);

} // namespace lumacap::harness
