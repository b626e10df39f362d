#include "platform/x11/windows/WindowWatch.h"

#include "platform/xcb/Connection.h"

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

void setMask(const xcb::Connection &connection, xcb_window_t window, std::uint32_t events)
{
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &events);
}

} // namespace

WindowWatch::WindowWatch(xcb::Connection &connection)
    : m_connection(connection)
{
}

WindowWatch::~WindowWatch()
{
    keepOnly({});
}

void WindowWatch::add(std::uint32_t window, std::uint32_t present, std::uint32_t events)
{
    if (!m_foundMasks.contains(window))
        m_foundMasks.insert(window, present);
    if ((present & events) != events) // another user of the connection may have set its own anew
        setMask(m_connection, window, present | events);
}

void WindowWatch::keepOnly(const QSet<std::uint32_t> &windows)
{
    m_foundMasks.removeIf([&](const auto &found) {
        const bool ends = !windows.contains(found.key());
        if (ends)
            setMask(m_connection, found.key(), found.value());
        return ends;
    });
    m_connection.flush();
}

} // namespace lumacap::x11
