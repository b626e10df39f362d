#include "platform/x11/MonitorWatch.h"

#include "platform/x11/Monitors.h"
#include "platform/xcb/Connection.h"

#include <utility>

#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

constexpr std::uint16_t everyChange = XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE
    | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE
    | XCB_RANDR_NOTIFY_MASK_RESOURCE_CHANGE;
constexpr std::uint16_t nothing = 0;

void listen(xcb::Connection &connection, std::uint16_t changes)
{
    if (!connection.hasMonitors())
        return;
    xcb_randr_select_input(connection.raw(), connection.screen().root, changes);
    connection.flush();
}

/// Whether the event tells of a change in the monitors.
bool isOfMonitors(xcb::Connection &connection, const xcb_generic_event_t &event)
{
    constexpr unsigned sentByAClient = 0x80;
    const auto *const randr = xcb_get_extension_data(connection.raw(), &xcb_randr_id);
    const unsigned type = event.response_type & ~sentByAClient;
    return randr->present != 0
        && (type == unsigned{randr->first_event} + XCB_RANDR_SCREEN_CHANGE_NOTIFY
            || type == unsigned{randr->first_event} + XCB_RANDR_NOTIFY);
}

} // namespace

MonitorWatch::MonitorWatch(xcb::Connection &connection, const Screen &screen,
                           std::function<void()> changed)
    : m_connection(connection)
    , m_screen(screen)
    , m_changed(std::move(changed))
{
    connect(&connection, &xcb::Connection::received, this, &MonitorWatch::look);
    listen(connection, everyChange);
}

MonitorWatch::~MonitorWatch()
{
    listen(m_connection, nothing);
}

void MonitorWatch::look(const void *event)
{
    if (!m_changed || !isOfMonitors(m_connection, *static_cast<const xcb_generic_event_t *>(event)))
        return;
    if (!frameOf(m_screen, currentMonitors(m_connection)))
        std::exchange(m_changed, {})();
}

} // namespace lumacap::x11
