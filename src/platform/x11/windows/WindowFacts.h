#pragma once

#include "platform/x11/windows/ClientWindows.h"

#include <QMargins>
#include <QRect>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumacap::x11 {

/// What the server and the window itself tell of a window. Lengths in root pixels, y down.
struct WindowFacts {
    SeenWindow window;
    QRect inside; ///< without its border
    int border = 0;
    QRect frame; ///< the top-level window that it is in, with that one's border
    std::optional<QMargins> decoration; ///< what the manager says to have put around it
    QMargins shadow; ///< the edges of the window that are no more than a shadow
    std::vector<std::uint32_t> types; ///< atoms, the most fitting first
    std::vector<std::uint32_t> states; ///< atoms
    std::optional<std::uint32_t> desktop;
    std::optional<QString> title;
    std::optional<std::int64_t> processId;
    QString applicationId; ///< empty where it tells none
    QString classInstance; ///< empty where it tells none
    QString className; ///< empty where it tells none

    friend bool operator==(const WindowFacts &, const WindowFacts &) = default;
};

/// The facts of these windows, in their order, all asked for at once. A window that has gone
/// meanwhile is left out.
QCoro::Task<std::vector<WindowFacts>>
queryWindowFacts(xcb::Connection &connection, WindowAtoms atoms, std::vector<SeenWindow> windows);

} // namespace lumacap::x11
