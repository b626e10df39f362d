#include "platform/wayland/clipboard/ToolkitPasteboard.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Seat.h"
#include "platform/wayland/toolkit/Toolkit.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <utility>

#include <wayland-client-core.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;

namespace lumacap::wayland {

namespace {

constexpr std::uint32_t managerVersion = 3;

ToolkitPasteboard &self(void *data)
{
    return *static_cast<ToolkitPasteboard *>(data);
}

void endDevice(wl_data_device *device)
{
    if (wl_data_device_get_version(device) >= WL_DATA_DEVICE_RELEASE_SINCE_VERSION)
        wl_data_device_release(device);
    else
        wl_data_device_destroy(device);
}

/// What others have copied is offered to us, too, and holds the compositor's memory until it is let
/// go.
void decline(wl_data_offer *offer)
{
    if (offer != nullptr)
        wl_data_offer_destroy(offer);
}

} // namespace

bool ToolkitPasteboard::isOffered(const Connection &connection)
{
    // Our own connection tells, for the toolkit's has not been asked yet.
    return connection.offers(wl_data_device_manager_interface)
        && connection.offers(wl_seat_interface)
        && QGuiApplication::platformName().startsWith(u"wayland"_s);
}

ToolkitPasteboard::ToolkitPasteboard()
    : m_registry(owned(wl_display_get_registry(toolkit::display()), &wl_registry_destroy))
{
    // What is offered comes when the toolkit next serves its events.
    wl_registry_add_listener(m_registry.get(), &registryListener(), this);
    wl_display_flush(toolkit::display());
}

ToolkitPasteboard::~ToolkitPasteboard() = default;

const wl_registry_listener &ToolkitPasteboard::registryListener()
{
    static constexpr wl_registry_listener listener{
        .global = [](void *data, wl_registry * /*registry*/, std::uint32_t number,
                     const char *interface,
                     std::uint32_t version) { self(data).bind(number, interface, version); },
        .global_remove = [](void *data, wl_registry * /*registry*/,
                            std::uint32_t number) { self(data).forget(number); },
    };
    return listener;
}

void ToolkitPasteboard::bind(std::uint32_t number, std::string_view interface,
                             std::uint32_t version)
{
    const auto bound = [&](const wl_interface &kind, std::uint32_t most) {
        return wl_registry_bind(m_registry.get(), number, &kind, std::min(version, most));
    };
    if (interface == wl_data_device_manager_interface.name && m_manager == nullptr) {
        m_manager = owned(static_cast<wl_data_device_manager *>(
                              bound(wl_data_device_manager_interface, managerVersion)),
                          &wl_data_device_manager_destroy);
    } else if (interface == wl_seat_interface.name && m_seat == nullptr) {
        m_seat = std::make_unique<FocusedSeat>(
            owned(static_cast<wl_seat *>(bound(wl_seat_interface, seatVersion)), &endSeat));
        m_seatNumber = number;
    }
}

void ToolkitPasteboard::forget(std::uint32_t number)
{
    if (m_seat == nullptr || number != m_seatNumber)
        return;
    endSource();
    m_dragged.reset();
    m_device.reset();
    m_seat.reset();
    m_usedSerial.reset();
}

const wl_data_device_listener &ToolkitPasteboard::deviceListener()
{
    static constexpr wl_data_device_listener listener{
        .data_offer = [](void *, wl_data_device *, wl_data_offer *) {},
        // The toolkit takes drops. To let the offer go before the drag has left would end it.
        .enter =
            [](void *data, wl_data_device *, std::uint32_t, wl_surface *, wl_fixed_t, wl_fixed_t,
               wl_data_offer *offer) {
                self(data).m_dragged = owned(offer, &wl_data_offer_destroy);
            },
        .leave = [](void *data, wl_data_device *) { self(data).m_dragged.reset(); },
        .motion = [](void *, wl_data_device *, std::uint32_t, wl_fixed_t, wl_fixed_t) {},
        .drop = [](void *, wl_data_device *) {},
        .selection = [](void *, wl_data_device *, wl_data_offer *offer) { decline(offer); },
    };
    return listener;
}

const wl_data_source_listener &ToolkitPasteboard::sourceListener()
{
    static constexpr wl_data_source_listener listener{
        .target = [](void *, wl_data_source *, const char *) {},
        .send = [](void *data, wl_data_source *, const char *type,
                   std::int32_t descriptor) { self(data).m_offered.send(type, descriptor); },
        .cancelled = [](void *data, wl_data_source *) { self(data).endSource(); },
        .dnd_drop_performed = [](void *, wl_data_source *) {},
        .dnd_finished = [](void *, wl_data_source *) {},
        .action = [](void *, wl_data_source *, std::uint32_t) {},
    };
    return listener;
}

/// Null while there is no seat.
wl_data_device *ToolkitPasteboard::device()
{
    if (m_device == nullptr && m_manager != nullptr && m_seat != nullptr) {
        m_device = owned(wl_data_device_manager_get_data_device(m_manager.get(), m_seat->raw()),
                         &endDevice);
        wl_data_device_add_listener(m_device.get(), &deviceListener(), this);
    }
    return m_device.get();
}

void ToolkitPasteboard::endSource()
{
    m_source.reset();
    m_offered.reset();
}

/// One by which the clipboard can be changed now: compositors refuse, without a word, the one by
/// which it became what it is, and those before it.
std::optional<std::uint32_t> ToolkitPasteboard::unusedSerial() const
{
    const auto serial = m_seat != nullptr ? m_seat->serial() : std::nullopt;
    return serial == m_usedSerial ? std::nullopt : serial;
}

void ToolkitPasteboard::clearContents()
{
    const auto serial = unusedSerial();
    if (!serial || device() == nullptr) {
        m_offered.reset(); // if the clipboard is ours it stays so, for the next to be written
        return;
    }
    wl_data_device_set_selection(device(), nullptr, *serial);
    endSource();
    wl_display_flush(toolkit::display());
}

void ToolkitPasteboard::write(std::unique_ptr<PasteboardItem> item)
{
    const auto serial = unusedSerial();
    if (serial && device() != nullptr)
        return take(*serial, std::move(item));
    if (m_source != nullptr && item->types() == m_types) // who reads from now on gets this one
        return m_offered.set(std::move(item));
    std::fputs("lumacap: nothing was copied: this desktop lets only the program whose window has "
               "the keyboard fill the clipboard; a file can be saved instead\n",
               stderr);
}

void ToolkitPasteboard::take(std::uint32_t serial, std::unique_ptr<PasteboardItem> item)
{
    auto source =
        owned(wl_data_device_manager_create_data_source(m_manager.get()), &wl_data_source_destroy);
    wl_data_source_add_listener(source.get(), &sourceListener(), this);
    m_types = item->types();
    for (const QByteArray &type : m_types)
        wl_data_source_offer(source.get(), type.constData());
    wl_data_device_set_selection(device(), source.get(), serial);
    m_source = std::move(source); // the older one goes when it is no longer the selection
    m_usedSerial = serial;
    m_offered.set(std::move(item));
    wl_display_flush(toolkit::display());
}

QCoro::Task<> ToolkitPasteboard::handOver()
{
    return m_offered.handOver();
}

} // namespace lumacap::wayland
