#pragma once

#include <QCoroTask>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

struct WindowAtoms;

/// What the root window tells of the windows on it.
struct RootState {
    /// Its children, the hindmost first.
    std::vector<std::uint32_t> children;
    /// The window manager's clients, the hindmost first; nothing where no manager tells them.
    std::optional<std::vector<std::uint32_t>> clients;
    /// The desktop whose windows are to be seen, where a mapped window may belong to a hidden one.
    std::optional<std::uint32_t> visibleDesktop;
};

/// Asks in two rounds, whatever the number of windows; nothing when the server does not answer.
QCoro::Task<std::optional<RootState>> queryRootState(xcb::Connection &connection,
                                                     WindowAtoms atoms);

} // namespace lumacap::x11
