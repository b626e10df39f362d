#include "platform/wlroots/sway/UnixSocket.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace lumacap::sway {

UnixSocket::~UnixSocket()
{
    close();
}

UnixSocket::Connecting UnixSocket::connectTo(const QString &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    if (name.isEmpty() || name.size() >= qsizetype{sizeof address.sun_path})
        return Connecting::Refused;
    std::ranges::copy(name, std::begin(address.sun_path));
    if (!isOpen())
        m_descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (!isOpen())
        return Connecting::Refused;
    if (connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return Connecting::Done;
    if (errno == EAGAIN || errno == EINTR)
        return Connecting::Busy;
    close();
    return Connecting::Refused;
}

void UnixSocket::close()
{
    if (isOpen())
        ::close(m_descriptor);
    m_descriptor = -1;
}

std::optional<qsizetype> UnixSocket::write(const QByteArray &bytes)
{
    const ssize_t count =
        send(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    if (count >= 0)
        return count;
    return errno == EAGAIN || errno == EINTR ? std::optional<qsizetype>(0) : std::nullopt;
}

std::optional<QByteArray> UnixSocket::read()
{
    QByteArray all;
    std::array<char, 65536> part{};
    // One turn's worth, so that who never stops talking does not keep us from all else.
    while (all.size() < 16 * qsizetype{sizeof part}) {
        const ssize_t count = recv(m_descriptor, part.data(), part.size(), 0);
        if (count > 0) {
            all.append(part.data(), count);
            continue;
        }
        const bool isLater = count < 0 && (errno == EAGAIN || errno == EINTR);
        // What came before the end is still told; the end is met again.
        if (!isLater && all.isEmpty())
            return std::nullopt;
        break;
    }
    return all;
}

bool UnixSocket::waitReadable(std::chrono::milliseconds limit) const
{
    pollfd descriptor{.fd = m_descriptor, .events = POLLIN, .revents = 0};
    return poll(&descriptor, 1, static_cast<int>(limit.count())) > 0;
}

std::optional<std::int64_t> peerProcess(int descriptor)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0)
        return std::nullopt;
    return credentials.pid;
}

} // namespace lumacap::sway
