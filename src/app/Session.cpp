#include "app/Session.h"

#include "platform/xcb/Connection.h"

#include <algorithm>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace lumacap {

namespace {

/// True when a compositor takes connections where WAYLAND_DISPLAY says, which may be left over from
/// a session that has ended.
bool isWayland()
{
    const QByteArray display = qgetenv("WAYLAND_DISPLAY");
    if (display.isEmpty())
        return false;
    const QByteArray path =
        display.startsWith('/') ? display : qgetenv("XDG_RUNTIME_DIR") + '/' + display;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return false;
    std::ranges::copy(path, address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers =
        connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(socket);
    return answers;
}

} // namespace

Session::Session() = default;
Session::~Session() = default;
Session::Session(Session &&) noexcept = default;

bool Session::hasDisplay()
{
    return isWayland() || xcb::Connection::answers();
}

Session Session::open()
{
    Session session;
    if (isWayland())
        return session;
    if (auto connection = xcb::Connection::open())
        session.m_x11 = std::move(*connection);
    return session;
}

void Session::onDisplayEnded(const QObject *context, const std::function<void()> &ended) const
{
    if (m_x11)
        QObject::connect(m_x11.get(), &xcb::Connection::closed, context, ended);
}

} // namespace lumacap
