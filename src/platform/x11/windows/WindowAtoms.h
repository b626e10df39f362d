#pragma once

#include <QCoroTask>

#include <cstdint>
#include <optional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// The atoms that windows and window managers tell of themselves with.
struct WindowAtoms {
    std::uint32_t utf8 = 0;

    // On the root window.
    std::uint32_t supportingWmCheck = 0;
    std::uint32_t clientListStacking = 0;
    std::uint32_t clientList = 0;
    std::uint32_t currentDesktop = 0;
    std::uint32_t compositor = 0; ///< the selection that a compositor owns

    // On a client's window.
    std::uint32_t wmState = 0;
    std::uint32_t state = 0;
    std::uint32_t stateHidden = 0;
    std::uint32_t stateShaded = 0;
    std::uint32_t stateAbove = 0;
    std::uint32_t stateBelow = 0;
    std::uint32_t desktop = 0;
    std::uint32_t frameExtents = 0;
    std::uint32_t shadowExtents = 0;
    std::uint32_t title = 0;
    std::uint32_t olderTitle = 0;
    std::uint32_t classNames = 0;
    std::uint32_t processId = 0;
    std::uint32_t applicationId = 0;

    std::uint32_t type = 0;
    std::uint32_t typeDesktop = 0;
    std::uint32_t typeDock = 0;
    std::uint32_t typeToolbar = 0;
    std::uint32_t typeMenu = 0;
    std::uint32_t typeUtility = 0;
    std::uint32_t typeSplash = 0;
    std::uint32_t typeDialog = 0;
    std::uint32_t typeDropdownMenu = 0;
    std::uint32_t typePopupMenu = 0;
    std::uint32_t typeTooltip = 0;
    std::uint32_t typeNotification = 0;
    std::uint32_t typeCombo = 0;
    std::uint32_t typeDragged = 0;
    std::uint32_t typeNormal = 0;
};

/// Whether the list of windows, or what it tells of one, may be another once the property `atom`
/// has changed.
bool tellsOfWindows(const WindowAtoms &atoms, std::uint32_t atom);

/// All of them, asked for together; nothing when the server does not answer.
QCoro::Task<std::optional<WindowAtoms>> queryWindowAtoms(xcb::Connection &connection);

} // namespace lumacap::x11
