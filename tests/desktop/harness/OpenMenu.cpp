#include "harness/OpenMenu.h"

#include "harness/WaitFor.h"

#include <stdexcept>

#include <xcb/xcb.h>

namespace lumacap::harness {

OpenMenu::OpenMenu(const QByteArray &display, const QRect &area)
    : m_connection(display)
    , m_area(area)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    xcb_connection_t *const raw = m_connection.raw();
    constexpr std::uint32_t colour = 0xd0d0d0;
    const std::uint32_t values[]{colour, 1}; // override-redirect
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, m_connection.root(),
                      static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                      static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(raw, m_window);
    if (!waitFor([this] { return takeInput(); }))
        throw std::runtime_error("the menu does not get pointer and keyboard");
}

bool OpenMenu::takeInput()
{
    xcb_connection_t *const raw = m_connection.raw();
    const auto pointerQuestion =
        xcb_grab_pointer(raw, 0, m_window, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const auto keyboardQuestion = xcb_grab_keyboard(raw, 0, m_window, XCB_CURRENT_TIME,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XReply<xcb_grab_pointer_reply_t> pointer(
        xcb_grab_pointer_reply(raw, pointerQuestion, nullptr));
    const XReply<xcb_grab_keyboard_reply_t> keyboard(
        xcb_grab_keyboard_reply(raw, keyboardQuestion, nullptr));
    return pointer && pointer->status == XCB_GRAB_STATUS_SUCCESS && keyboard
        && keyboard->status == XCB_GRAB_STATUS_SUCCESS;
}

bool OpenMenu::isOpen()
{
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
        if (event->response_type == XCB_KEY_PRESS)
            ++m_keys;
        if (event->response_type != XCB_BUTTON_PRESS)
            continue;
        const auto &press = reinterpret_cast<const xcb_button_press_event_t &>(*event);
        if (!m_area.contains(press.root_x, press.root_y))
            close();
    }
    return m_isOpen;
}

void OpenMenu::close()
{
    m_isOpen = false;
    xcb_ungrab_pointer(m_connection.raw(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(m_connection.raw(), XCB_CURRENT_TIME);
    xcb_unmap_window(m_connection.raw(), m_window);
    m_connection.finish();
}

} // namespace lumacap::harness
