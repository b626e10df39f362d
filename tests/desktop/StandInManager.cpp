#include "StandInManager.h"

#include <xcb/xcb.h>

namespace lumacap::harness {

StandInManager::StandInManager(const QByteArray &display)
    : m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    xcb_connection_t *const raw = m_connection.raw();
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, m_connection.root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 32, 1,
                        &m_window);
    setOnRoot("_NET_SUPPORTING_WM_CHECK", {m_window});
}

void StandInManager::list(const std::vector<std::uint32_t> &clients) const
{
    setOnRoot("_NET_CLIENT_LIST_STACKING", clients);
}

void StandInManager::setCurrentDesktop(std::uint32_t desktop) const
{
    setOnRoot("_NET_CURRENT_DESKTOP", {desktop});
}

void StandInManager::compose() const
{
    xcb_set_selection_owner(m_connection.raw(), m_window, m_connection.atom("_NET_WM_CM_S0"),
                            XCB_CURRENT_TIME);
    m_connection.finish();
}

void StandInManager::vanish() const
{
    xcb_destroy_window(m_connection.raw(), m_window);
    m_connection.finish();
}

void StandInManager::setOnRoot(const char *property, const std::vector<std::uint32_t> &values) const
{
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, m_connection.root(),
                        m_connection.atom(property), XCB_ATOM_CARDINAL, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    m_connection.finish();
}

} // namespace lumacap::harness
