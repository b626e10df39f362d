#include "platform/x11/hotkeys/KeyGrabs.h"

#include "platform/xcb/Connection.h"

#include <vector>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

/// `modifiers` with every combination of `locks`.
std::vector<std::uint16_t> underEveryLock(std::uint8_t modifiers, std::uint8_t locks)
{
    std::vector<std::uint16_t> all;
    unsigned combination = locks;
    do {
        all.push_back(static_cast<std::uint16_t>(modifiers | combination));
        combination = (combination - 1) & locks; // from all of them down to none
    } while (combination != locks);
    return all;
}

} // namespace

QCoro::Task<Grab> grab(xcb::Connection &connection, KeyChord chord, std::uint8_t locks)
{
    auto *const raw = connection.raw();
    std::vector<xcb_void_cookie_t> requests;
    for (const std::uint16_t modifiers : underEveryLock(chord.modifiers, locks))
        requests.push_back(xcb_grab_key_checked(raw, 0, connection.screen().root, modifiers,
                                                chord.key, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_ASYNC));
    // A request without a reply of its own is known to be done when a later one is answered.
    const auto fence = xcb_get_input_focus(raw);
    const auto done = co_await connection.reply<xcb_get_input_focus_reply_t>(fence);
    Grab answer = done ? Grab::Granted : Grab::Refused;
    for (const xcb_void_cookie_t request : requests) {
        if (const xcb::Owned<xcb_generic_error_t> refusal{xcb_request_check(raw, request)})
            answer = Grab::Refused;
    }
    co_return answer;
}

void ungrab(xcb::Connection &connection, KeyChord chord, std::uint8_t locks)
{
    for (const std::uint16_t modifiers : underEveryLock(chord.modifiers, locks))
        xcb_ungrab_key(connection.raw(), chord.key, connection.screen().root, modifiers);
    connection.flush();
}

} // namespace lumacap::x11
