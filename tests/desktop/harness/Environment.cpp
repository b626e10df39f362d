#include "harness/Environment.h"

#include <array>
#include <cstdlib>

namespace lumacap::harness {

Environment bareEnvironment()
{
    static constexpr std::array kept{"PATH",         "LD_LIBRARY_PATH", "ASAN_OPTIONS",
                                     "LSAN_OPTIONS", "UBSAN_OPTIONS",   "TSAN_OPTIONS",
                                     "USER",         "LOGNAME"};
    Environment environment{{"LC_ALL", "C.UTF-8"}, {"NO_AT_BRIDGE", "1"}, {"GTK_A11Y", "none"}};
    for (const char *name : kept) {
        if (const char *value = std::getenv(name))
            environment[name] = value;
    }
    return environment;
}

} // namespace lumacap::harness
