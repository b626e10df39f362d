#include "graphics/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace lumacap {

void fatal(std::string_view brokenRule)
{
    std::fprintf(stderr, "lumacap: fatal: %.*s\n", static_cast<int>(brokenRule.size()),
                 brokenRule.data());
    std::abort();
}

} // namespace lumacap
