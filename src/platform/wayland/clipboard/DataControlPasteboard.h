#pragma once

#include "platform/Pasteboard.h"
#include "platform/wayland/Owned.h"
#include "platform/wayland/clipboard/OfferedItem.h"

#include <memory>

struct wl_seat;
struct zwlr_data_control_device_v1;
struct zwlr_data_control_device_v1_listener;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_source_v1;
struct zwlr_data_control_source_v1_listener;

namespace lumacap::wayland {

class Connection;

/// The clipboard of a compositor that lets programs without a focused window write it, as it does
/// for clipboard managers.
class DataControlPasteboard final : public Pasteboard {
public:
    /// Whether the compositor does so, and has a seat whose clipboard that is.
    static bool isOffered(const Connection &connection);

    /// Borrows `connection`, which outlives the object.
    explicit DataControlPasteboard(Connection &connection);
    Q_DISABLE_COPY_MOVE(DataControlPasteboard)
    ~DataControlPasteboard() override;

    void clearContents() override;
    void write(std::unique_ptr<PasteboardItem> item) override;
    QCoro::Task<> handOver() override;

private:
    static const zwlr_data_control_device_v1_listener &deviceListener();
    static const zwlr_data_control_source_v1_listener &sourceListener();
    zwlr_data_control_device_v1 *device();
    void endDevice();
    void endSource();

    Connection &m_connection;
    Owned<zwlr_data_control_manager_v1> m_manager;
    Owned<wl_seat> m_seat;
    Owned<zwlr_data_control_device_v1> m_device;
    Owned<zwlr_data_control_source_v1> m_source;
    OfferedItem m_offered;
};

} // namespace lumacap::wayland
