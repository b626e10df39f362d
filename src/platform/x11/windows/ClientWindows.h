#pragma once

#include <QCoroTask>

#include <cstdint>
#include <vector>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

struct RootState;
struct WindowAtoms;

/// Who places a window.
enum class Placing {
    ByManager, ///< or by nobody, where no manager runs
    ByItself, ///< a menu, a notification
};

/// A window that a person sees as one.
struct SeenWindow {
    std::uint32_t id = 0;
    /// The child of the root that it is in: its frame, or itself.
    std::uint32_t topLevel = 0;
    Placing placing = Placing::ByManager;
    /// The events of it that the connection's users had asked for.
    std::uint32_t eventMask = 0;

    friend bool operator==(const SeenWindow &, const SeenWindow &) = default;
};

/// The windows that are mapped, the frontmost first, as they stand on the root.
QCoro::Task<std::vector<SeenWindow>> querySeenWindows(xcb::Connection &connection,
                                                      WindowAtoms atoms, RootState root);

} // namespace lumacap::x11
