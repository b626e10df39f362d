#include "platform/x11/ScreenChanges.h"

#include "platform/xcb/Connection.h"

#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace lumacap::x11 {

ScreenChanges::ScreenChanges(xcb::Connection &connection)
    : m_connection(connection)
    , m_isTold(connection.hasDamage() && connection.hasFixes())
{
    if (!m_isTold)
        return;
    auto *const raw = m_connection.raw();
    // The server refuses the requests of a client that never asked; what it answers is all one.
    xcb_discard_reply(raw, xcb_damage_query_version(raw, 1, 1).sequence);
    m_damage = xcb_generate_id(raw);
    m_drawn = xcb_generate_id(raw);
    // Of all levels the one with the fewest events, which nobody here listens to: it is asked.
    xcb_damage_create(raw, m_damage, m_connection.screen().root, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    xcb_xfixes_create_region(raw, m_drawn, 0, nullptr);
    m_connection.flush();
}

ScreenChanges::~ScreenChanges()
{
    if (!m_isTold)
        return;
    xcb_damage_destroy(m_connection.raw(), m_damage);
    xcb_xfixes_destroy_region(m_connection.raw(), m_drawn);
    m_connection.flush();
}

QCoro::Task<bool> ScreenChanges::any()
{
    if (!m_isTold)
        co_return false;
    auto *const raw = m_connection.raw();
    xcb_damage_subtract(raw, m_damage, XCB_NONE, m_drawn);
    const auto question = xcb_xfixes_fetch_region(raw, m_drawn);
    const auto region = co_await m_connection.reply<xcb_xfixes_fetch_region_reply_t>(question);
    co_return region && (*region)->extents.width > 0 && (*region)->extents.height > 0;
}

} // namespace lumacap::x11
