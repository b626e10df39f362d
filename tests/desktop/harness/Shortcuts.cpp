#include "harness/Shortcuts.h"

#include <stdexcept>

#include <xcb/xcb.h>

namespace lumacap::harness {

namespace {

xcb_void_cookie_t take(const XConnection &connection, const Shortcut &shortcut)
{
    return xcb_grab_key_checked(connection.raw(), 0, connection.root(), shortcut.modifiers,
                                shortcut.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
}

bool isGranted(const XConnection &connection, xcb_void_cookie_t request)
{
    const XReply<xcb_generic_error_t> refusal(xcb_request_check(connection.raw(), request));
    return refusal == nullptr;
}

} // namespace

bool isFree(const QByteArray &display, const Shortcut &shortcut)
{
    const XConnection connection(display);
    xcb_grab_server(connection.raw());
    const auto request = take(connection, shortcut);
    xcb_ungrab_key(connection.raw(), shortcut.key, connection.root(), shortcut.modifiers);
    xcb_ungrab_server(connection.raw());
    return isGranted(connection, request);
}

HeldShortcut::HeldShortcut(const QByteArray &display, const Shortcut &shortcut)
    : m_connection(display)
{
    if (!isGranted(m_connection, take(m_connection, shortcut)))
        throw std::runtime_error("somebody else has the shortcut");
}

int HeldShortcut::presses()
{
    m_connection.finish();
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())})
        m_presses += event->response_type == XCB_KEY_PRESS ? 1 : 0;
    return m_presses;
}

} // namespace lumacap::harness
