#pragma once

#include <cstdint>
#include <optional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// Who has the keyboard while nobody grabs it.
struct InputFocus {
    /// A window, or one of the protocol's two values for none in particular.
    std::uint32_t window = 0;
    /// Who gets it when the window goes, as the protocol numbers them.
    std::uint8_t revertTo = 0;
};

/// Who has it now; nothing when the server is gone. One round trip.
std::optional<InputFocus> currentFocus(xcb::Connection &connection);

/// Gives the focus from the window `ours` back to `earlier`, unless somebody else has taken it
/// meanwhile or `earlier` is no longer on the screen. Done when it returns.
void giveFocusBack(xcb::Connection &connection, InputFocus earlier, std::uint32_t ours);

} // namespace lumacap::x11
