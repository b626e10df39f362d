#pragma once

#include <cstdint>

#include <sys/types.h>

namespace lumacap::harness {

/// How often the threads of `process` have gone to sleep of their own accord, which is once a
/// wake-up.
std::int64_t wakeUps(pid_t process);
/// The memory that is the process's own, with its share of what it shares, in bytes.
std::int64_t memoryOf(pid_t process);

} // namespace lumacap::harness
