#include "platform/x11/X11Screens.h"

#include "platform/x11/Monitors.h"
#include "platform/xcb/Connection.h"

#include <xcb/xcb.h>

namespace lumacap::x11 {

X11Screens::X11Screens(xcb::Connection &connection)
    : m_connection(connection)
{
}

QCoro::Task<> X11Screens::prepare()
{
    co_return; // the server tells at once
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
    screens.reserve(monitors.size());
    for (const Monitor &monitor : monitors)
        screens.push_back(screenOf(monitor, monitors.front()));
    return screens;
}

std::optional<Point<Global>> X11Screens::pointerPosition() const
{
    // The question goes first, so that one trip brings both answers.
    auto *const raw = m_connection.raw();
    const auto question = xcb_query_pointer(raw, m_connection.screen().root);
    const std::vector<Monitor> monitors = currentMonitors(m_connection);
    const xcb::Owned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(raw, question, nullptr));
    m_connection.flush();
    if (!pointer || pointer->same_screen == 0 || monitors.empty())
        return std::nullopt;
    const QRect &main = monitors.front().frame;
    return globalPoint({pointer->root_x, pointer->root_y}, main, backingFactorOf(main));
}

} // namespace lumacap::x11
