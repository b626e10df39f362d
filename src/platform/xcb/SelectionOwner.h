#pragma once

#include "platform/Pasteboard.h"
#include "platform/xcb/IncrementalTransfers.h"

#include <QCoroTask>
#include <QObject>
#include <QPromise>

#include <cstdint>
#include <memory>
#include <optional>

struct xcb_selection_clear_event_t;
struct xcb_selection_notify_event_t;
struct xcb_selection_request_event_t;
struct xcb_property_notify_event_t;

namespace lumacap::xcb {

class Connection;

/// Owns the X selection CLIPBOARD from a window of its own that is never shown (ICCCM, section 2),
/// so that no window of ours needs the focus. What is offered is made when a reader asks for it.
class SelectionOwner final : public QObject {
    Q_OBJECT

public:
    /// Borrows `connection`, which outlives the object.
    explicit SelectionOwner(Connection &connection);
    ~SelectionOwner() override;
    Q_DISABLE_COPY_MOVE(SelectionOwner)

    /// The selection has no owner afterwards.
    void clear();
    /// Takes the selection and serves `item` until another program takes it.
    void own(std::unique_ptr<PasteboardItem> item);
    /// Asks the clipboard manager to keep the item's best type (ICCCM SAVE_TARGETS). Ends when it
    /// has it, at once when nothing is offered or there is no manager, after five seconds when it
    /// hangs.
    QCoro::Task<> handOver();

private:
    void finishHandOver();
    void handleEvent(const void *event);
    void handleRequest(const xcb_selection_request_event_t &request);
    void handleClear(const xcb_selection_clear_event_t &clear);
    void handleNotify(const xcb_selection_notify_event_t &notify);
    void handleOwnProperty(const xcb_property_notify_event_t &change);

    bool answer(std::uint32_t requestor, std::uint32_t property, std::uint32_t target);
    bool answerMultiple(std::uint32_t requestor, std::uint32_t property);
    bool answerTargets(std::uint32_t requestor, std::uint32_t property);
    bool answerBytes(std::uint32_t requestor, std::uint32_t property, std::uint32_t target);

    Connection &m_connection;
    IncrementalTransfers m_transfers;
    std::uint32_t m_window = 0;
    /// The server's time when the selection was last taken, and the number of the request that took
    /// it.
    std::uint32_t m_ownedSince = 0;
    std::uint32_t m_takenBy = 0;
    std::unique_ptr<PasteboardItem> m_item;
    /// While the clipboard manager is asked.
    std::optional<QPromise<void>> m_handOver;
};

} // namespace lumacap::xcb
