#include "harness/ClientWindow.h"

#include "harness/WaitFor.h"

#include <array>

#include <xcb/xcb.h>

namespace lumacap::harness {

ClientWindow::ClientWindow(const QByteArray &display, const QRect &area, WindowKind kind)
    : m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    xcb_connection_t *const raw = m_connection.raw();
    constexpr std::uint32_t colour = 0x306090;
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, m_connection.root(),
                      static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                      static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &colour);
    // A place of the user's own choice, which window managers keep.
    constexpr std::uint32_t userPosition = 1;
    std::array<std::uint32_t, 18> sizeHints{userPosition};
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, sizeHints.size(), sizeHints.data());
    describe(kind);
    xcb_map_window(raw, m_window);
    require("another program's window", [this] { return m_connection.isViewable(m_window); });
}

void ClientWindow::describe(WindowKind kind) const
{
    switch (kind) {
    case WindowKind::Ordinary:
        return;
    case WindowKind::Dock:
        setAtoms("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
        return;
    case WindowKind::FullScreen:
        setAtoms("_NET_WM_STATE", "_NET_WM_STATE_FULLSCREEN");
        return;
    }
}

void ClientWindow::setAtoms(const char *property, const char *value) const
{
    const std::uint32_t atom = m_connection.atom(value);
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom(property), XCB_ATOM_ATOM, 32, 1, &atom);
}

void ClientWindow::takeFocus() const
{
    require("the focus", [this] {
        xcb_set_input_focus(m_connection.raw(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
        return hasFocus();
    });
}

bool ClientWindow::hasFocus() const
{
    const XReply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
        m_connection.raw(), xcb_get_input_focus(m_connection.raw()), nullptr));
    return focus && focus->focus == m_window;
}

void ClientWindow::hide() const
{
    xcb_unmap_window(m_connection.raw(), m_window);
    m_connection.finish();
}

} // namespace lumacap::harness
