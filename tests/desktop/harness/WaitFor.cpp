#include "harness/WaitFor.h"

#include <stdexcept>
#include <string>
#include <thread>

namespace lumacap::harness {

bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return condition();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

void require(const char *what, const std::function<bool()> &condition,
             std::chrono::milliseconds limit)
{
    if (!waitFor(condition, limit))
        throw std::runtime_error(std::string("waited in vain for ") + what);
}

} // namespace lumacap::harness
