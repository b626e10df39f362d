#pragma once

#include <cstdlib>
#include <memory>

namespace lumacap::xcb {

struct Free {
    void operator()(void *memory) const noexcept { std::free(memory); }
};

/// What libxcb hands out to be freed: replies, errors, events.
template <class T>
using Owned = std::unique_ptr<T, Free>;

} // namespace lumacap::xcb
