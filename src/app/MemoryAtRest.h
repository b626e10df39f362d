#pragma once

#include <cstdint>

namespace lumacap {

/// Whether a segment of a program or library, by its flags (`PF_R`, …), holds in memory what its
/// file holds: it is mapped to be read or run, and never written.
constexpr bool isAsItsFile(std::uint32_t segmentFlags)
{
    constexpr std::uint32_t writable = 2; // PF_W
    return (segmentFlags & writable) == 0;
}

/// Gives the system what the process does not need until something happens: freed memory, and the
/// code and constants of the program and its libraries, page by page as their files hold them. What
/// is used again comes back from the system's cache of files, as long as that holds it. A segment
/// in which the process has changed a page, as a debugger's breakpoints do, stays whole. May be
/// called on any thread.
void giveBackMemory();

} // namespace lumacap
