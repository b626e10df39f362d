#include "harness/XConnection.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <xcb/xcb.h>

namespace lumacap::harness {

void Free::operator()(void *memory) const
{
    std::free(memory);
}

void XConnection::Disconnect::operator()(xcb_connection_t *connection) const
{
    xcb_disconnect(connection);
}

XConnection::XConnection(const QByteArray &display)
    : m_connection(xcb_connect(display.constData(), nullptr))
{
    if (xcb_connection_has_error(raw()) != 0)
        throw std::runtime_error("no connection to X server " + display.toStdString());
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(raw())).data;
}

std::uint32_t XConnection::root() const
{
    return m_screen->root;
}

QSize XConnection::size() const
{
    return {m_screen->width_in_pixels, m_screen->height_in_pixels};
}

std::uint32_t XConnection::atom(const char *name) const
{
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(raw(), xcb_intern_atom(raw(), 0, length, name), nullptr));
    return reply ? reply->atom : 0;
}

std::uint32_t XConnection::selectionOwner(const char *name) const
{
    const XReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(raw(), xcb_get_selection_owner(raw(), atom(name)), nullptr));
    return reply ? reply->owner : 0;
}

QByteArray XConnection::property(std::uint32_t window, const char *name) const
{
    constexpr std::uint32_t words = 1U << 20;
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        raw(), xcb_get_property(raw(), 0, window, atom(name), XCB_ATOM_ANY, 0, words), nullptr));
    if (!reply)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

bool XConnection::isViewable(std::uint32_t window) const
{
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(raw(), xcb_get_window_attributes(raw(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

void XConnection::finish() const
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(raw(), xcb_get_input_focus(raw()), nullptr));
}

} // namespace lumacap::harness
