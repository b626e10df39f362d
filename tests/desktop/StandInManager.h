#pragma once

#include "harness/XConnection.h"

#include <cstdint>
#include <vector>

namespace lumacap::harness {

/// Says what a window manager says, and manages nothing: for what no real one does at a test's
/// word.
class StandInManager {
public:
    /// Introduces itself on the root.
    explicit StandInManager(const QByteArray &display);

    /// Claims to manage these, the hindmost first.
    void list(const std::vector<std::uint32_t> &clients) const;
    void setCurrentDesktop(std::uint32_t desktop) const;
    /// Claims to be the compositor too.
    void compose() const;
    /// Goes as one that crashed: its window goes, what it wrote on the root stays.
    void vanish() const;

private:
    void setOnRoot(const char *property, const std::vector<std::uint32_t> &values) const;

    XConnection m_connection;
    std::uint32_t m_window = 0;
};

} // namespace lumacap::harness
