#include "platform/xcb/IncrementalTransfers.h"

#include "platform/xcb/Connection.h"

#include <algorithm>
#include <chrono>

#include <xcb/xcb.h>

using namespace std::chrono_literals;

namespace lumacap::xcb {

namespace {

/// A reader that takes no piece for this long has forgotten us.
constexpr auto stallLimit = 20s;

} // namespace

IncrementalTransfers::IncrementalTransfers(Connection &connection)
    : m_connection(connection)
{
    connect(&connection, &Connection::received, this, &IncrementalTransfers::handleEvent);
    m_stalled.setSingleShot(true);
    m_stalled.setInterval(stallLimit);
    connect(&m_stalled, &QTimer::timeout, this, [this] {
        while (!m_transfers.empty())
            forget(m_transfers.back().requestor, m_transfers.back().property);
    });
}

qsizetype IncrementalTransfers::largestPiece() const
{
    // A quarter of the largest request, as ICCCM advises: several readers share the server's
    // memory.
    return static_cast<qsizetype>(xcb_get_maximum_request_length(m_connection.raw()));
}

void IncrementalTransfers::send(std::uint32_t requestor, std::uint32_t property, std::uint32_t type,
                                const QByteArray &bytes)
{
    auto *const raw = m_connection.raw();
    if (bytes.size() <= largestPiece()) {
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, requestor, property, type, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.constData());
        return;
    }
    forget(requestor, property); // the reader asked again before it had read it all
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(raw, requestor, XCB_CW_EVENT_MASK, &events);
    const auto atLeast = static_cast<std::uint32_t>(bytes.size());
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, requestor, property, m_connection.atom("INCR"),
                        32, 1, &atLeast);
    m_transfers.push_back({requestor, property, type, bytes});
    m_stalled.start();
}

void IncrementalTransfers::handleEvent(const void *event)
{
    const auto type = static_cast<const xcb_generic_event_t *>(event)->response_type & 0x7f;
    if (type == XCB_DESTROY_NOTIFY) {
        const auto gone = static_cast<const xcb_destroy_notify_event_t *>(event)->window;
        std::erase_if(m_transfers,
                      [gone](const Transfer &transfer) { return transfer.requestor == gone; });
        return;
    }
    if (type != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = *static_cast<const xcb_property_notify_event_t *>(event);
    if (change.state != XCB_PROPERTY_DELETE)
        return;
    const auto asked = std::ranges::find_if(m_transfers, [&change](const Transfer &transfer) {
        return transfer.requestor == change.window && transfer.property == change.atom;
    });
    if (asked != m_transfers.end())
        sendNextPiece(*asked);
}

void IncrementalTransfers::sendNextPiece(Transfer &transfer)
{
    // The last piece is an empty one: it says that there is no more.
    const qsizetype size = std::min(largestPiece(), transfer.bytes.size() - transfer.sent);
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, transfer.requestor,
                        transfer.property, transfer.type, 8, static_cast<std::uint32_t>(size),
                        transfer.bytes.constData() + transfer.sent);
    transfer.sent += size;
    m_stalled.start();
    if (size == 0)
        forget(transfer.requestor, transfer.property);
    m_connection.flush();
}

void IncrementalTransfers::forget(std::uint32_t requestor, std::uint32_t property)
{
    std::erase_if(m_transfers, [&](const Transfer &transfer) {
        return transfer.requestor == requestor && transfer.property == property;
    });
    const bool readsMore = std::ranges::any_of(
        m_transfers, [&](const Transfer &transfer) { return transfer.requestor == requestor; });
    if (!readsMore) {
        const std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
        xcb_change_window_attributes(m_connection.raw(), requestor, XCB_CW_EVENT_MASK, &none);
    }
    if (m_transfers.empty())
        m_stalled.stop();
}

} // namespace lumacap::xcb
