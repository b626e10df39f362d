#include "platform/x11/windows/ClientWindows.h"

#include "platform/x11/windows/BoundedReplies.h"
#include "platform/x11/windows/RootState.h"
#include "platform/x11/windows/WindowAtoms.h"

#include <QHash>

#include <ranges>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

/// Managers put a client one or two windows deep; no more are looked through.
constexpr int deepest = 4;

/// What the server tells of one window's place.
struct Standing {
    xcb_window_t parent = XCB_NONE;
    std::vector<xcb_window_t> children; // the hindmost first
    std::uint32_t eventMask = 0;
    bool isSeen = false;
    bool overridesManager = false;
    bool isClient = false;
};
/// Windows that have gone are not among them.
using Standings = QHash<xcb_window_t, Standing>;
using WindowIds = std::vector<xcb_window_t>;

struct Questions {
    xcb_window_t id;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_query_tree_cookie_t tree;
    xcb_get_property_cookie_t state;
};

QCoro::Task<Standings> queryStandings(xcb::Connection &connection, WindowAtoms atoms, WindowIds ids)
{
    auto *const raw = connection.raw();
    std::vector<Questions> questions;
    for (const xcb_window_t id : ids)
        questions.push_back(
            {id, xcb_get_window_attributes(raw, id), xcb_query_tree(raw, id),
             xcb_get_property(raw, 0, id, atoms.wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 0)});
    BoundedReplies replies(connection);
    Standings standings;
    for (const Questions &asked : questions) {
        const auto attributes =
            co_await replies.take<xcb_get_window_attributes_reply_t>(asked.attributes);
        const auto tree = co_await replies.take<xcb_query_tree_reply_t>(asked.tree);
        const auto state = co_await replies.take<xcb_get_property_reply_t>(asked.state);
        if (!attributes || !tree)
            continue;
        const xcb_window_t *const children = xcb_query_tree_children(tree.get());
        standings.insert(asked.id,
                         {.parent = tree->parent,
                          .children = {children, children + tree->children_len},
                          .eventMask = attributes->your_event_mask,
                          .isSeen = attributes->map_state == XCB_MAP_STATE_VIEWABLE
                              && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          .overridesManager = attributes->override_redirect != 0,
                          .isClient = state && state->type != XCB_NONE});
    }
    co_return standings;
}

/// The clients in each top-level window, the frontmost first.
using Clients = QHash<xcb_window_t, WindowIds>;

/// Which windows are whose, as far as it has been asked.
class WindowTree {
public:
    WindowTree(xcb::Connection &connection, const WindowAtoms &atoms)
        : m_connection(connection)
        , m_atoms(atoms)
    {
    }

    QCoro::Task<> learn(WindowIds windows)
    {
        const Standings learned = co_await queryStandings(m_connection, m_atoms, windows);
        m_known.insert(learned);
    }

    /// A window not learned about, or gone, is not seen.
    Standing standing(xcb_window_t window) const { return m_known.value(window); }

    QCoro::Task<Clients> climbFrom(WindowIds clients);
    QCoro::Task<Clients> searchIn(WindowIds topLevels);

private:
    xcb::Connection &m_connection;
    WindowAtoms m_atoms;
    Standings m_known;
};

/// From the clients that the manager lists outward to the root.
QCoro::Task<Clients> WindowTree::climbFrom(WindowIds clients)
{
    const xcb_window_t root = m_connection.screen().root;
    WindowIds reached = clients;
    for (int round = 0; round < deepest; ++round) {
        WindowIds unknown;
        for (xcb_window_t &window : reached) {
            const auto known = m_known.constFind(window);
            if (known != m_known.cend() && known->parent != root)
                window = known->parent;
            if (!m_known.contains(window))
                unknown.push_back(window);
        }
        co_await learn(unknown);
    }
    Clients found;
    for (std::size_t i = clients.size(); i > 0; --i)
        found[reached.at(i - 1)].push_back(clients.at(i - 1));
    co_return found;
}

/// From the top-level windows inward, for managers that list nobody.
QCoro::Task<Clients> WindowTree::searchIn(WindowIds topLevels)
{
    struct Place {
        xcb_window_t window;
        xcb_window_t topLevel;
    };
    Clients found;
    std::vector<Place> level;
    for (const xcb_window_t topLevel : topLevels)
        level.push_back({topLevel, topLevel});
    for (int round = 0; round < deepest && !level.empty(); ++round) {
        std::vector<Place> nextLevel;
        WindowIds unknown;
        for (const auto [window, topLevel] : level | std::views::reverse) {
            const Standing place = standing(window);
            if (place.isSeen && place.isClient)
                found[topLevel].push_back(window);
            if (!place.isSeen || found.contains(topLevel))
                continue;
            for (const xcb_window_t child : place.children) {
                nextLevel.push_back({child, topLevel});
                unknown.push_back(child);
            }
        }
        co_await learn(unknown);
        level = nextLevel;
    }
    co_return found;
}

} // namespace

QCoro::Task<std::vector<SeenWindow>> querySeenWindows(xcb::Connection &connection,
                                                      WindowAtoms atoms, RootState root)
{
    const WindowIds listed = root.clients.value_or(WindowIds());
    WindowIds first = root.children;
    first.insert(first.end(), listed.begin(), listed.end());
    WindowTree tree(connection, atoms);
    co_await tree.learn(first);
    Clients clients;
    if (root.clients)
        clients = co_await tree.climbFrom(listed);
    else
        clients = co_await tree.searchIn(root.children);

    std::vector<SeenWindow> seen;
    for (const xcb_window_t topLevel : root.children | std::views::reverse) {
        const Standing standing = tree.standing(topLevel);
        if (!standing.isSeen)
            continue;
        for (const xcb_window_t client : clients.value(topLevel)) {
            const Standing inside = tree.standing(client);
            if (inside.isSeen)
                seen.push_back({client, topLevel, Placing::ByManager, inside.eventMask});
        }
        const bool isUnmanaged = standing.overridesManager || root.clients.has_value();
        if (!clients.contains(topLevel))
            seen.push_back({topLevel, topLevel,
                            isUnmanaged ? Placing::ByItself : Placing::ByManager,
                            standing.eventMask});
    }
    co_return seen;
}

} // namespace lumacap::x11
