#include "harness/XEmbedTray.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

#include <xcb/xcb.h>

namespace lumacap::harness {

namespace {

constexpr std::uint16_t iconSize = 32;
constexpr std::uint32_t requestDock = 0;
constexpr std::uint32_t embeddedNotify = 0;

xcb_client_message_event_t message(std::uint32_t window, std::uint32_t type,
                                   const std::array<std::uint32_t, 5> &data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::ranges::copy(data, event.data.data32);
    return event;
}

void send(const XConnection &connection, std::uint32_t destination, std::uint32_t mask,
          const xcb_client_message_event_t &event)
{
    xcb_send_event(connection.raw(), 0, destination, mask, reinterpret_cast<const char *>(&event));
}

} // namespace

XEmbedTray::XEmbedTray(const QByteArray &display)
    : m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    xcb_connection_t *const raw = m_connection.raw();
    const std::array<std::uint32_t, 3> values{m_connection.screen().white_pixel, 1,
                                              XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 8 * iconSize,
                      iconSize, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    xcb_map_window(raw, m_window);
    const std::uint32_t selection = m_connection.atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(raw, m_window, selection, XCB_CURRENT_TIME);
    if (m_connection.selectionOwner("_NET_SYSTEM_TRAY_S0") != m_window)
        throw std::runtime_error("no place for a tray");
    send(m_connection, m_connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
         message(m_connection.root(), m_connection.atom("MANAGER"),
                 {XCB_CURRENT_TIME, selection, m_window, 0, 0}));
    m_connection.finish();
}

int XEmbedTray::dockedCount()
{
    const std::uint32_t opcode = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    m_connection.finish();
    while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(m_connection.raw()))) {
        const auto type = event->response_type & 0x7f;
        if (type == XCB_DESTROY_NOTIFY) {
            const auto *gone = reinterpret_cast<const xcb_destroy_notify_event_t *>(event.get());
            std::erase(m_icons, gone->window);
        } else if (type == XCB_CLIENT_MESSAGE) {
            const auto *request = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
            if (request->type == opcode && request->data.data32[1] == requestDock)
                dock(request->data.data32[2]);
        }
    }
    return static_cast<int>(m_icons.size());
}

bool XEmbedTray::isFirstIconVisible()
{
    xcb_connection_t *const raw = m_connection.raw();
    if (dockedCount() == 0)
        return false;
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        raw, xcb_get_window_attributes(raw, m_icons.front()), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
        return false;
    const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        raw, xcb_get_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, iconSize, iconSize, ~0U),
        nullptr));
    if (!image)
        return false;
    const std::uint8_t *const bytes = xcb_get_image_data(image.get());
    const int length = xcb_get_image_data_length(image.get());
    for (int pixel = 4; pixel + 4 <= length; pixel += 4) {
        if (std::memcmp(bytes, bytes + pixel, 3) != 0)
            return true;
    }
    return false;
}

QPoint XEmbedTray::firstIconCentre()
{
    return {iconSize / 2, iconSize / 2};
}

void XEmbedTray::dock(std::uint32_t icon)
{
    xcb_connection_t *const raw = m_connection.raw();
    const auto left = static_cast<std::int16_t>(m_icons.size() * iconSize);
    // An icon may be gone before its request is read.
    const XReply<xcb_generic_error_t> refused(
        xcb_request_check(raw, xcb_reparent_window_checked(raw, icon, m_window, left, 0)));
    if (refused)
        return;
    const std::array<std::uint32_t, 2> size{iconSize, iconSize};
    xcb_configure_window(raw, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size.data());
    send(m_connection, icon, XCB_EVENT_MASK_NO_EVENT,
         message(icon, m_connection.atom("_XEMBED"),
                 {XCB_CURRENT_TIME, embeddedNotify, 0, m_window, 0}));
    xcb_map_window(raw, icon);
    m_connection.finish();
    m_icons.push_back(icon);
}

} // namespace lumacap::harness
