#include "platform/x11/InputFocus.h"

#include "platform/xcb/Connection.h"

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

bool isWindow(std::uint32_t focus)
{
    return focus != XCB_INPUT_FOCUS_NONE && focus != XCB_INPUT_FOCUS_POINTER_ROOT;
}

bool isViewable(xcb::Connection &connection, std::uint32_t window)
{
    const xcb::Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection.raw(), xcb_get_window_attributes(connection.raw(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

} // namespace

std::optional<InputFocus> currentFocus(xcb::Connection &connection)
{
    const xcb::Owned<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        connection.raw(), xcb_get_input_focus(connection.raw()), nullptr));
    connection.flush();
    if (!focus)
        return std::nullopt;
    return InputFocus{focus->focus, focus->revert_to};
}

void giveFocusBack(xcb::Connection &connection, InputFocus earlier, std::uint32_t ours)
{
    const auto now = currentFocus(connection);
    if (!now || (isWindow(now->window) && now->window != ours))
        return;
    if (isWindow(earlier.window) && !isViewable(connection, earlier.window))
        return;
    auto *const raw = connection.raw();
    const auto request =
        xcb_set_input_focus_checked(raw, earlier.revertTo, earlier.window, XCB_CURRENT_TIME);
    // Waited for, so that no window manager sees our window go with the focus still on it and gives
    // it to a window of its own choice. Refused when the earlier window went at this very moment.
    const xcb::Owned<xcb_generic_error_t> refusal(xcb_request_check(raw, request));
    connection.flush();
}

} // namespace lumacap::x11
