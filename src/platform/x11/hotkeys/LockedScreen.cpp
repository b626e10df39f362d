#include "platform/x11/hotkeys/LockedScreen.h"

#include "platform/x11/Monitors.h"
#include "platform/xcb/Connection.h"

#include <QGuiApplication>

#include <algorithm>
#include <iterator>
#include <ranges>
#include <span>
#include <vector>

#include <qguiapplication_platform.h>
#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

/// Of `parent`, the lowest first.
std::vector<xcb_window_t> childrenOf(xcb_connection_t *raw, xcb_window_t parent)
{
    const xcb::Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(raw, xcb_query_tree(raw, parent), nullptr));
    if (!tree)
        return {};
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    return {children.begin(), children.end()};
}

bool isOfToolkit(xcb_window_t window)
{
    const auto *const native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native == nullptr)
        return false;
    const xcb_setup_t &setup = *xcb_get_setup(native->connection());
    return (window & ~setup.resource_id_mask) == setup.resource_id_base;
}

bool isClient(xcb::Connection &connection, xcb_window_t window)
{
    const auto question = xcb_get_property(connection.raw(), 0, window, connection.atom("WM_STATE"),
                                           XCB_ATOM_ANY, 0, 0);
    const xcb::Owned<xcb_get_property_reply_t> property(
        xcb_get_property_reply(connection.raw(), question, nullptr));
    return property && property->type != XCB_ATOM_NONE;
}

/// Whether a window manager put a client's window into `frame`; some put a window between the two.
bool isFrame(xcb::Connection &connection, xcb_window_t frame)
{
    std::vector<xcb_window_t> inside = childrenOf(connection.raw(), frame);
    const std::size_t direct = inside.size();
    for (std::size_t index = 0; index < direct; ++index)
        std::ranges::copy(childrenOf(connection.raw(), inside[index]), std::back_inserter(inside));
    return std::ranges::any_of(inside,
                               [&](xcb_window_t window) { return isClient(connection, window); });
}

/// A window on the screen.
struct ShownWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    QRect frame;
    bool isLookedAfter = false; ///< by a window manager
};

/// Of the root, the frontmost first.
std::vector<ShownWindow> shownWindows(xcb::Connection &connection)
{
    auto *const raw = connection.raw();
    std::vector<ShownWindow> shown;
    for (const xcb_window_t window :
         childrenOf(raw, connection.screen().root) | std::views::reverse) {
        const auto attributesQuestion = xcb_get_window_attributes(raw, window);
        const auto areaQuestion = xcb_get_geometry(raw, window);
        const xcb::Owned<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(raw, attributesQuestion, nullptr));
        const xcb::Owned<xcb_get_geometry_reply_t> area(
            xcb_get_geometry_reply(raw, areaQuestion, nullptr));
        if (attributes && area && attributes->map_state == XCB_MAP_STATE_VIEWABLE
            && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            shown.push_back({window,
                             {area->x, area->y, area->width, area->height},
                             attributes->override_redirect == 0 || isFrame(connection, window)});
    }
    return shown;
}

bool isHidden(const std::vector<ShownWindow> &windows, std::vector<Monitor> monitors)
{
    for (const ShownWindow &window : windows) {
        if (monitors.empty())
            return true;
        if (window.isLookedAfter || isOfToolkit(window.id))
            return false;
        std::erase_if(monitors,
                      [&](const Monitor &monitor) { return window.frame.contains(monitor.frame); });
    }
    return false; // the lowest of all is a picture behind the desktop
}

} // namespace

bool isScreenLocked(xcb::Connection &connection)
{
    const bool isLocked = isHidden(shownWindows(connection), currentMonitors(connection));
    connection.flush();
    return isLocked;
}

} // namespace lumacap::x11
