#include "harness/PopUps.h"

#include <span>

#include <xcb/xcb.h>

namespace lumacap::harness {

std::vector<QRect> popUps(const XConnection &connection)
{
    xcb_connection_t *const raw = connection.raw();
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(raw, xcb_query_tree(raw, connection.root()), nullptr));
    std::vector<QRect> areas;
    if (!tree)
        return areas;
    for (const xcb_window_t window : std::span(xcb_query_tree_children(tree.get()),
                                               static_cast<std::size_t>(tree->children_len))) {
        const auto question = xcb_get_window_attributes(raw, window);
        const XReply<xcb_get_geometry_reply_t> area(
            xcb_get_geometry_reply(raw, xcb_get_geometry(raw, window), nullptr));
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(raw, question, nullptr));
        if (area && attributes && attributes->override_redirect != 0
            && attributes->map_state == XCB_MAP_STATE_VIEWABLE)
            areas.emplace_back(area->x, area->y, area->width, area->height);
    }
    return areas;
}

} // namespace lumacap::harness
