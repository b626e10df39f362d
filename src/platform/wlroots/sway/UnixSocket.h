#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstdint>
#include <optional>

namespace lumacap::sway {

/// A stream socket to another process on this machine, which never blocks.
class UnixSocket {
public:
    enum class Connecting { Done, Busy, Refused };

    UnixSocket() = default;
    ~UnixSocket();
    UnixSocket(const UnixSocket &) = delete;
    UnixSocket(UnixSocket &&other) = delete;
    UnixSocket &operator=(const UnixSocket &) = delete;
    UnixSocket &operator=(UnixSocket &&other) = delete;

    /// Busy when the other side's queue is full, as it is after three connections it has not
    /// looked at yet; it may be tried again.
    Connecting connectTo(const QString &path);
    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }
    void close();

    /// The number of bytes taken from the start of `bytes`; nothing when the other side has gone.
    std::optional<qsizetype> write(const QByteArray &bytes);
    /// What has arrived, which may be nothing yet; nothing at all when the other side has gone.
    std::optional<QByteArray> read();
    /// False when nothing arrived within `limit`.
    bool waitReadable(std::chrono::milliseconds limit) const;

private:
    int m_descriptor = -1;
};

/// The process at the other end of a socket, as the system knows it; nothing for other descriptors.
std::optional<std::int64_t> peerProcess(int descriptor);

} // namespace lumacap::sway
