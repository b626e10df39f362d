#pragma once

#include "platform/Pasteboard.h"
#include "platform/wayland/Owned.h"
#include "platform/wayland/clipboard/FocusedSeat.h"
#include "platform/wayland/clipboard/OfferedItem.h"

#include <QList>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

struct wl_data_device;
struct wl_data_device_listener;
struct wl_data_device_manager;
struct wl_data_offer;
struct wl_data_source;
struct wl_data_source_listener;
struct wl_registry;
struct wl_registry_listener;

namespace lumacap::wayland {

class Connection;

/// The clipboard of a compositor that lets only the program whose window has the focus write it:
/// on the toolkit's connection, whose windows ours are. Once it is ours it stays so without the
/// focus, until another program takes it.
class ToolkitPasteboard final : public Pasteboard {
public:
    /// Whether the compositor has a clipboard and a seat, and the toolkit shows its windows there.
    static bool isOffered(const Connection &connection);

    ToolkitPasteboard();
    Q_DISABLE_COPY_MOVE(ToolkitPasteboard)
    ~ToolkitPasteboard() override;

    void clearContents() override;
    /// Without the focus, and when the clipboard is not ours yet, it stays what it was, and a line
    /// on standard error says so.
    void write(std::unique_ptr<PasteboardItem> item) override;
    QCoro::Task<> handOver() override;

private:
    static const wl_registry_listener &registryListener();
    static const wl_data_device_listener &deviceListener();
    static const wl_data_source_listener &sourceListener();
    void bind(std::uint32_t number, std::string_view interface, std::uint32_t version);
    void forget(std::uint32_t number);
    wl_data_device *device();
    std::optional<std::uint32_t> unusedSerial() const;
    void take(std::uint32_t serial, std::unique_ptr<PasteboardItem> item);
    void endSource();

    Owned<wl_registry> m_registry;
    Owned<wl_data_device_manager> m_manager;
    std::uint32_t m_seatNumber = 0;
    std::unique_ptr<FocusedSeat> m_seat;
    Owned<wl_data_device> m_device;
    Owned<wl_data_offer> m_dragged; // over a window of ours
    Owned<wl_data_source> m_source;
    std::optional<std::uint32_t> m_usedSerial; // by which the clipboard last became ours
    QList<QByteArray> m_types;
    OfferedItem m_offered;
};

} // namespace lumacap::wayland
