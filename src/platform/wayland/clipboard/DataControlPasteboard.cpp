#include "platform/wayland/clipboard/DataControlPasteboard.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Seat.h"

#include <utility>

#include <protocols/wlr-data-control-unstable-v1.h>
#include <wayland-client-protocol.h>

namespace lumacap::wayland {

namespace {

constexpr std::uint32_t managerVersion = 2;

DataControlPasteboard &self(void *data)
{
    return *static_cast<DataControlPasteboard *>(data);
}

/// What others have copied is offered to us, too, and holds the compositor's memory until it is let
/// go.
void decline(zwlr_data_control_offer_v1 *offer)
{
    if (offer != nullptr)
        zwlr_data_control_offer_v1_destroy(offer);
}

} // namespace

bool DataControlPasteboard::isOffered(const Connection &connection)
{
    return connection.offers(zwlr_data_control_manager_v1_interface)
        && connection.offers(wl_seat_interface);
}

DataControlPasteboard::DataControlPasteboard(Connection &connection)
    : m_connection(connection)
    , m_manager(connection.bind(zwlr_data_control_manager_v1_interface, managerVersion,
                                &zwlr_data_control_manager_v1_destroy))
{
}

DataControlPasteboard::~DataControlPasteboard() = default;

const zwlr_data_control_device_v1_listener &DataControlPasteboard::deviceListener()
{
    static constexpr zwlr_data_control_device_v1_listener listener{
        .data_offer = [](void * /*data*/, zwlr_data_control_device_v1 * /*device*/,
                         zwlr_data_control_offer_v1 * /*offer*/) {},
        .selection = [](void * /*data*/, zwlr_data_control_device_v1 * /*device*/,
                        zwlr_data_control_offer_v1 *offer) { decline(offer); },
        .finished = [](void *data,
                       zwlr_data_control_device_v1 * /*device*/) { self(data).endDevice(); },
        .primary_selection = [](void * /*data*/, zwlr_data_control_device_v1 * /*device*/,
                                zwlr_data_control_offer_v1 *offer) { decline(offer); },
    };
    return listener;
}

const zwlr_data_control_source_v1_listener &DataControlPasteboard::sourceListener()
{
    static constexpr zwlr_data_control_source_v1_listener listener{
        .send = [](void *data, zwlr_data_control_source_v1 * /*source*/, const char *type,
                   std::int32_t descriptor) { self(data).m_offered.send(type, descriptor); },
        .cancelled = [](void *data,
                        zwlr_data_control_source_v1 * /*source*/) { self(data).endSource(); },
    };
    return listener;
}

/// Null while there is no seat.
zwlr_data_control_device_v1 *DataControlPasteboard::device()
{
    if (m_device != nullptr)
        return m_device.get();
    m_seat = m_connection.bind(wl_seat_interface, seatVersion, &endSeat);
    if (m_seat == nullptr)
        return nullptr;
    m_device = owned(zwlr_data_control_manager_v1_get_data_device(m_manager.get(), m_seat.get()),
                     &zwlr_data_control_device_v1_destroy);
    zwlr_data_control_device_v1_add_listener(m_device.get(), &deviceListener(), this);
    return m_device.get();
}

/// The seat has gone. There may be another one when something is written next.
void DataControlPasteboard::endDevice()
{
    endSource();
    m_device.reset();
    m_seat.reset();
}

void DataControlPasteboard::endSource()
{
    m_source.reset();
    m_offered.reset();
}

void DataControlPasteboard::clearContents()
{
    if (device() != nullptr)
        zwlr_data_control_device_v1_set_selection(device(), nullptr);
    endSource();
    m_connection.flush();
}

void DataControlPasteboard::write(std::unique_ptr<PasteboardItem> item)
{
    if (device() == nullptr)
        return;
    auto source = owned(zwlr_data_control_manager_v1_create_data_source(m_manager.get()),
                        &zwlr_data_control_source_v1_destroy);
    zwlr_data_control_source_v1_add_listener(source.get(), &sourceListener(), this);
    for (const QByteArray &type : item->types())
        zwlr_data_control_source_v1_offer(source.get(), type.constData());
    zwlr_data_control_device_v1_set_selection(device(), source.get());
    m_source = std::move(source); // the older one goes when it is no longer the selection
    m_offered.set(std::move(item));
    m_connection.flush();
}

QCoro::Task<> DataControlPasteboard::handOver()
{
    return m_offered.handOver();
}

} // namespace lumacap::wayland
