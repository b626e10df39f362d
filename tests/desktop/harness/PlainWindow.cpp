#include "harness/PlainWindow.h"

#include "harness/WaitFor.h"

#include <algorithm>
#include <array>

#include <xcb/xcb.h>

namespace lumacap::harness {

namespace {

QByteArrayView bytesOf(const std::uint32_t &id)
{
    return {reinterpret_cast<const char *>(&id), sizeof id};
}

} // namespace

PlainWindow::PlainWindow(const QByteArray &display, const QRect &area, Placement placement,
                         std::uint32_t parent)
    : m_connection(display)
    , m_id(xcb_generate_id(m_connection.raw()))
{
    xcb_connection_t *const raw = m_connection.raw();
    const std::array<std::uint32_t, 2> values{m_connection.screen().white_pixel,
                                              placement == Placement::ByItself};
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_id, parent == 0 ? m_connection.root() : parent,
                      static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                      static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                      values.data());
    constexpr std::uint32_t userPosition = 1;
    const std::array<std::uint32_t, 18> sizeHints{userPosition};
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, m_id, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, sizeHints.size(), sizeHints.data());
    m_connection.finish();
}

PlainWindow PlainWindow::shown(const QByteArray &display, const QRect &area)
{
    PlainWindow window(display, area);
    window.show();
    return window;
}

void PlainWindow::setText(const char *property, const char *type, const QByteArray &text) const
{
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_id,
                        m_connection.atom(property), m_connection.atom(type), 8,
                        static_cast<std::uint32_t>(text.size()), text.constData());
    m_connection.finish();
}

void PlainWindow::setTitle(const QByteArray &title) const
{
    setText("_NET_WM_NAME", "UTF8_STRING", title);
}

void PlainWindow::setNumbers(const char *property, const std::vector<std::uint32_t> &numbers,
                             const char *type) const
{
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_id,
                        m_connection.atom(property), m_connection.atom(type), 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
    m_connection.finish();
}

void PlainWindow::setAtoms(const char *property, const std::vector<const char *> &names) const
{
    std::vector<std::uint32_t> atoms;
    atoms.reserve(names.size());
    for (const char *name : names)
        atoms.push_back(m_connection.atom(name));
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_id,
                        m_connection.atom(property), XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
    m_connection.finish();
}

void PlainWindow::renounceDecoration() const
{
    constexpr std::uint32_t decorationsGiven = 2;
    const std::vector<std::uint32_t> none{decorationsGiven, 0, 0, 0, 0};
    setNumbers("_MOTIF_WM_HINTS", none, "_MOTIF_WM_HINTS");
}

void PlainWindow::show() const
{
    xcb_map_window(m_connection.raw(), m_id);
    require("the window", [this] { return isOnScreen(); });
}

/// The window manager's windows as ids of four bytes, the frontmost last.
QByteArray PlainWindow::managed() const
{
    return m_connection.property(m_connection.root(), "_NET_CLIENT_LIST_STACKING");
}

void PlainWindow::requireManaged() const
{
    require("the window to be managed", [this] { return managed().contains(bytesOf(m_id)); });
}

bool PlainWindow::isFrontmost() const
{
    return managed().endsWith(bytesOf(m_id));
}

bool PlainWindow::isOnScreen() const
{
    return m_connection.isViewable(m_id);
}

void PlainWindow::hide() const
{
    xcb_unmap_window(m_connection.raw(), m_id);
    m_connection.finish();
}

void PlainWindow::takeFocus() const
{
    require("the focus", [this] {
        xcb_set_input_focus(m_connection.raw(), XCB_INPUT_FOCUS_PARENT, m_id, XCB_CURRENT_TIME);
        return hasFocus();
    });
}

bool PlainWindow::hasFocus() const
{
    const XReply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        m_connection.raw(), xcb_get_input_focus(m_connection.raw()), nullptr));
    return focus && focus->focus == m_id;
}

void PlainWindow::listen() const
{
    const std::uint32_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_change_window_attributes(m_connection.raw(), m_id, XCB_CW_EVENT_MASK, &events);
    m_connection.finish();
}

int PlainWindow::buttonPresses()
{
    countEvents();
    return m_buttonPresses;
}

int PlainWindow::keyEvents()
{
    countEvents();
    return m_keyEvents;
}

void PlainWindow::countEvents()
{
    m_connection.finish();
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.raw())}) {
        const auto type = event->response_type;
        m_buttonPresses += type == XCB_BUTTON_PRESS ? 1 : 0;
        m_keyEvents += type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE ? 1 : 0;
    }
}

void PlainWindow::raise() const
{
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection.raw(), m_id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    m_connection.finish();
}

void PlainWindow::place(const QRect &area) const
{
    const std::array values{area.x(), area.y(), area.width(), area.height()};
    xcb_configure_window(m_connection.raw(), m_id,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH
                             | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    m_connection.finish();
}

void PlainWindow::setBorder(std::uint32_t pixels) const
{
    xcb_configure_window(m_connection.raw(), m_id, XCB_CONFIG_WINDOW_BORDER_WIDTH, &pixels);
    m_connection.finish();
}

void PlainWindow::ask(const char *message, const std::vector<std::uint32_t> &data) const
{
    send(m_id, message, data);
}

void PlainWindow::switchToDesktop(std::uint32_t desktop) const
{
    send(m_connection.root(), "_NET_CURRENT_DESKTOP", {desktop, 0, 0, 0, 0});
}

void PlainWindow::send(std::uint32_t about, const char *message,
                       const std::vector<std::uint32_t> &data) const
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = about;
    event.type = m_connection.atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(m_connection.raw(), 0, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    m_connection.finish();
}

void PlainWindow::destroy() const
{
    xcb_destroy_window(m_connection.raw(), m_id);
    m_connection.finish();
}

QRect PlainWindow::outermostFrame() const
{
    xcb_connection_t *const raw = m_connection.raw();
    std::uint32_t window = m_id;
    for (std::uint32_t parent = window; parent != m_connection.root();) {
        window = parent;
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(raw, xcb_query_tree(raw, window), nullptr));
        if (!tree)
            return {};
        parent = tree->parent;
    }
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(raw, xcb_get_geometry(raw, window), nullptr));
    if (!geometry)
        return {};
    const int border = geometry->border_width;
    return {geometry->x, geometry->y, geometry->width + 2 * border, geometry->height + 2 * border};
}

} // namespace lumacap::harness
