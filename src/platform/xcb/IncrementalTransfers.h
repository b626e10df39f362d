#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <vector>

namespace lumacap::xcb {

class Connection;

/// Puts a selection's bytes into properties of the windows that asked for them: in one piece where
/// they fit into a request, else piece by piece as the reader deletes the property (ICCCM,
/// section 2.7.2, INCR).
class IncrementalTransfers final : public QObject {
    Q_OBJECT

public:
    /// Borrows `connection`, which outlives the object.
    explicit IncrementalTransfers(Connection &connection);

    /// Starts handing `bytes` to `requestor`. A reader that disappears or stops reading is given
    /// up.
    void send(std::uint32_t requestor, std::uint32_t property, std::uint32_t type,
              const QByteArray &bytes);

private:
    struct Transfer {
        std::uint32_t requestor = 0;
        std::uint32_t property = 0;
        std::uint32_t type = 0;
        QByteArray bytes;
        qsizetype sent = 0;
    };

    void handleEvent(const void *event);
    void sendNextPiece(Transfer &transfer);
    void forget(std::uint32_t requestor, std::uint32_t property);
    qsizetype largestPiece() const;

    Connection &m_connection;
    std::vector<Transfer> m_transfers;
    QTimer m_stalled;
};

} // namespace lumacap::xcb
