#pragma once

#include "platform/Pasteboard.h"
#include "platform/wayland/Owned.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

struct wl_seat;
struct zwlr_data_control_device_v1;
struct zwlr_data_control_device_v1_listener;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_source_v1;
struct zwlr_data_control_source_v1_listener;

namespace lumacap::wayland {

class Connection;
class PipeWriter;

/// The clipboard of a compositor that lets programs without a focused window write it, as it does
/// for clipboard managers.
class DataControlPasteboard final : public QObject, public Pasteboard {
    Q_OBJECT

public:
    /// Whether the compositor does so, and has a seat whose clipboard that is.
    static bool isOffered(const Connection &connection);

    /// Borrows `connection`, which outlives the object.
    explicit DataControlPasteboard(Connection &connection);
    Q_DISABLE_COPY_MOVE(DataControlPasteboard)
    ~DataControlPasteboard() override;

    void clearContents() override;
    void write(std::unique_ptr<PasteboardItem> item) override;
    /// No protocol asks a manager to keep what we offer. One that keeps everything reads it as soon
    /// as it is written: ends when nobody reads any more, and a moment was left to begin.
    QCoro::Task<> handOver() override;

private:
    static const zwlr_data_control_device_v1_listener &deviceListener();
    static const zwlr_data_control_source_v1_listener &sourceListener();
    zwlr_data_control_device_v1 *device();
    void endDevice();
    void endSource();
    void send(const QByteArray &type, int descriptor);

    Connection &m_connection;
    Owned<zwlr_data_control_manager_v1> m_manager;
    Owned<wl_seat> m_seat;
    Owned<zwlr_data_control_device_v1> m_device;
    Owned<zwlr_data_control_source_v1> m_source;
    std::unique_ptr<PasteboardItem> m_item;
    QElapsedTimer m_sinceWrite;
    /// To those who read at the moment, also what was replaced meanwhile.
    std::vector<std::unique_ptr<PipeWriter>> m_writers;
};

} // namespace lumacap::wayland
