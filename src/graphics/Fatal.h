#pragma once

#include <string_view>

namespace lumacap {

/// Stops the program: one line on standard error naming the broken rule, then `std::abort`. Only
/// for states that no user, file or desktop can bring about.
[[noreturn]] void fatal(std::string_view brokenRule);

} // namespace lumacap
