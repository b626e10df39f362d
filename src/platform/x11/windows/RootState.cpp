#include "platform/x11/windows/RootState.h"

#include "platform/x11/windows/BoundedReplies.h"
#include "platform/x11/windows/PropertyValues.h"
#include "platform/x11/windows/WindowAtoms.h"

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

constexpr std::uint32_t mostClients = 1U << 16;

xcb_get_property_cookie_t askFor(const xcb::Connection &connection, xcb_window_t window,
                                 xcb_atom_t property, std::uint32_t mostNumbers)
{
    return xcb_get_property(connection.raw(), 0, window, property, XCB_ATOM_ANY, 0, mostNumbers);
}

/// Whether one client made both windows: the first bits of an id are the client's.
bool areOfOneClient(const xcb::Connection &connection, xcb_window_t one, xcb_window_t other)
{
    return ((one ^ other) & ~xcb_get_setup(connection.raw())->resource_id_mask) == 0;
}

} // namespace

QCoro::Task<std::optional<RootState>> queryRootState(xcb::Connection &connection, WindowAtoms atoms)
{
    const xcb_window_t root = connection.screen().root;
    const auto checkAsked = askFor(connection, root, atoms.supportingWmCheck, 1);
    const auto stackingAsked = askFor(connection, root, atoms.clientListStacking, mostClients);
    const auto listAsked = askFor(connection, root, atoms.clientList, mostClients);
    const auto desktopAsked = askFor(connection, root, atoms.currentDesktop, 1);
    const auto compositorAsked = xcb_get_selection_owner(connection.raw(), atoms.compositor);
    const auto treeAsked = xcb_query_tree(connection.raw(), root);

    BoundedReplies replies(connection);
    const auto check = co_await replies.take<xcb_get_property_reply_t>(checkAsked);
    const auto stacking = co_await replies.take<xcb_get_property_reply_t>(stackingAsked);
    const auto list = co_await replies.take<xcb_get_property_reply_t>(listAsked);
    const auto desktop = co_await replies.take<xcb_get_property_reply_t>(desktopAsked);
    const auto compositor = co_await replies.take<xcb_get_selection_owner_reply_t>(compositorAsked);
    const auto tree = co_await replies.take<xcb_query_tree_reply_t>(treeAsked);
    if (!tree)
        co_return {};

    RootState state;
    const xcb_window_t *const children = xcb_query_tree_children(tree.get());
    state.children.assign(children, children + tree->children_len);

    // A manager that has gone may leave its properties behind, but not its window.
    const xcb_window_t manager = numberIn(check.get()).value_or(XCB_NONE);
    const auto aliveAsked = askFor(connection, manager, atoms.supportingWmCheck, 1);
    const auto alive = co_await replies.take<xcb_get_property_reply_t>(aliveAsked);
    if (manager == XCB_NONE || numberIn(alive.get()) != manager)
        co_return state;
    const auto &clients = stacking && stacking->type != XCB_NONE ? stacking : list;
    if (clients && clients->type != XCB_NONE)
        state.clients = numbersIn(clients.get());
    // Most managers unmap what they hide, and may show one desktop on each monitor. A manager that
    // is the compositor too may keep everything mapped and leave hidden windows unpainted.
    if (compositor && areOfOneClient(connection, compositor->owner, manager))
        state.visibleDesktop = numberIn(desktop.get());
    co_return state;
}

} // namespace lumacap::x11
