#include "platform/x11/windows/WindowAtoms.h"

#include "platform/x11/windows/BoundedReplies.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

struct AtomRow {
    std::string_view name;
    std::uint32_t WindowAtoms::*atom;
};

constexpr std::array atomRows{
    AtomRow{"UTF8_STRING", &WindowAtoms::utf8},
    AtomRow{"_NET_SUPPORTING_WM_CHECK", &WindowAtoms::supportingWmCheck},
    AtomRow{"_NET_CLIENT_LIST_STACKING", &WindowAtoms::clientListStacking},
    AtomRow{"_NET_CLIENT_LIST", &WindowAtoms::clientList},
    AtomRow{"_NET_CURRENT_DESKTOP", &WindowAtoms::currentDesktop},
    AtomRow{"_NET_WM_CM_S0", &WindowAtoms::compositor},
    AtomRow{"WM_STATE", &WindowAtoms::wmState},
    AtomRow{"_NET_WM_STATE", &WindowAtoms::state},
    AtomRow{"_NET_WM_STATE_HIDDEN", &WindowAtoms::stateHidden},
    AtomRow{"_NET_WM_STATE_SHADED", &WindowAtoms::stateShaded},
    AtomRow{"_NET_WM_STATE_ABOVE", &WindowAtoms::stateAbove},
    AtomRow{"_NET_WM_STATE_BELOW", &WindowAtoms::stateBelow},
    AtomRow{"_NET_WM_DESKTOP", &WindowAtoms::desktop},
    AtomRow{"_NET_FRAME_EXTENTS", &WindowAtoms::frameExtents},
    AtomRow{"_GTK_FRAME_EXTENTS", &WindowAtoms::shadowExtents},
    AtomRow{"_NET_WM_NAME", &WindowAtoms::title},
    AtomRow{"WM_NAME", &WindowAtoms::olderTitle},
    AtomRow{"WM_CLASS", &WindowAtoms::classNames},
    AtomRow{"_NET_WM_PID", &WindowAtoms::processId},
    AtomRow{"_GTK_APPLICATION_ID", &WindowAtoms::applicationId},
    AtomRow{"_NET_WM_WINDOW_TYPE", &WindowAtoms::type},
    AtomRow{"_NET_WM_WINDOW_TYPE_DESKTOP", &WindowAtoms::typeDesktop},
    AtomRow{"_NET_WM_WINDOW_TYPE_DOCK", &WindowAtoms::typeDock},
    AtomRow{"_NET_WM_WINDOW_TYPE_TOOLBAR", &WindowAtoms::typeToolbar},
    AtomRow{"_NET_WM_WINDOW_TYPE_MENU", &WindowAtoms::typeMenu},
    AtomRow{"_NET_WM_WINDOW_TYPE_UTILITY", &WindowAtoms::typeUtility},
    AtomRow{"_NET_WM_WINDOW_TYPE_SPLASH", &WindowAtoms::typeSplash},
    AtomRow{"_NET_WM_WINDOW_TYPE_DIALOG", &WindowAtoms::typeDialog},
    AtomRow{"_NET_WM_WINDOW_TYPE_DROPDOWN_MENU", &WindowAtoms::typeDropdownMenu},
    AtomRow{"_NET_WM_WINDOW_TYPE_POPUP_MENU", &WindowAtoms::typePopupMenu},
    AtomRow{"_NET_WM_WINDOW_TYPE_TOOLTIP", &WindowAtoms::typeTooltip},
    AtomRow{"_NET_WM_WINDOW_TYPE_NOTIFICATION", &WindowAtoms::typeNotification},
    AtomRow{"_NET_WM_WINDOW_TYPE_COMBO", &WindowAtoms::typeCombo},
    AtomRow{"_NET_WM_WINDOW_TYPE_DND", &WindowAtoms::typeDragged},
    AtomRow{"_NET_WM_WINDOW_TYPE_NORMAL", &WindowAtoms::typeNormal},
};
static_assert(sizeof(WindowAtoms) == atomRows.size() * sizeof(std::uint32_t),
              "every atom has its row");

} // namespace

bool tellsOfWindows(const WindowAtoms &atoms, std::uint32_t atom)
{
    return std::ranges::any_of(atomRows,
                               [&](const AtomRow &row) { return atoms.*row.atom == atom; });
}

QCoro::Task<std::optional<WindowAtoms>> queryWindowAtoms(xcb::Connection &connection)
{
    std::vector<xcb_intern_atom_cookie_t> questions;
    questions.reserve(atomRows.size());
    for (const AtomRow &row : atomRows)
        questions.push_back(xcb_intern_atom(
            connection.raw(), 0, static_cast<std::uint16_t>(row.name.size()), row.name.data()));
    BoundedReplies replies(connection);
    WindowAtoms atoms;
    bool areComplete = true;
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const auto reply = co_await replies.take<xcb_intern_atom_reply_t>(questions.at(i));
        areComplete = areComplete && reply != nullptr;
        if (reply)
            atoms.*atomRows.at(i).atom = reply->atom;
    }
    if (!areComplete)
        co_return {};
    co_return atoms;
}

} // namespace lumacap::x11
