#pragma once

#include "harness/WaitFor.h"

#include <chrono>
#include <cstdint>

#include <sys/types.h>

namespace lumacap::harness {

/// How often the threads of `process` have gone to sleep of their own accord, which is once a
/// wake-up.
std::int64_t wakeUps(pid_t process);
/// Waits until `process` has not woken up for `quiet`; false when `limit` passes first.
[[nodiscard]] bool comesToRest(pid_t process, std::chrono::milliseconds quiet,
                               std::chrono::milliseconds limit = usualLimit);
/// The memory that the process has filled, with its share of what it shares, in bytes. Files'
/// pages, which others' ends make its own, don't count.
std::int64_t memoryOf(pid_t process);
/// All pages that the process has in memory, those of its files and what it shares with others too,
/// in bytes.
std::int64_t pagesOf(pid_t process);

} // namespace lumacap::harness
