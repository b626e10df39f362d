#include "platform/x11/X11Screens.h"

#include "platform/x11/Monitors.h"

namespace lumacap::x11 {

X11Screens::X11Screens(xcb::Connection &connection)
    : m_connection(connection)
{
}

std::optional<Screen> X11Screens::mainScreen() const
{
    const std::vector<Screen> all = screens();
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::vector<Screen> X11Screens::screens() const
{
    const std::vector<Monitor> monitors = currentMonitors(m_connection);
    std::vector<Screen> screens;
    for (const Monitor &monitor : monitors) {
        const QRect &main = monitors.front().frame;
        screens.push_back({monitor.id, globalFrame(monitor.frame, main, backingFactorOf(main)),
                           backingFactorOf(monitor.frame)});
    }
    return screens;
}

} // namespace lumacap::x11
