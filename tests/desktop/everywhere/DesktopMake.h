#pragma once

#include "harness/TestDesktop.h"

#include <memory>
#include <ostream>
#include <vector>

namespace lumacap::harness {

/// One of the desktops that the program has to work on.
struct DesktopMake {
    const char *name;
    /// Two outputs; the first is the main one, and has 1200 x 700 of the desktop's units.
    std::unique_ptr<TestDesktop> (*make)();
};

inline std::ostream &operator<<(std::ostream &stream, const DesktopMake &make)
{
    return stream << make.name;
}

/// All that tests can be run on.
const std::vector<DesktopMake> &everyDesktop();

} // namespace lumacap::harness
