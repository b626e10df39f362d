#pragma once

#include <functional>

namespace lumacap {

/// Work on one of several parts of something.
using PartWork = std::function<void(int part)>;

/// Does the parts 0 … `parts` - 1, each once, on at most `workers` threads, the caller's among
/// them, and returns when all of them have ended. `makeWork` is called once on each thread, so that
/// the work may own what one thread reuses. False where memory ran out: then parts may be left
/// undone.
bool doSideBySide(int parts, int workers, const std::function<PartWork()> &makeWork);

} // namespace lumacap
