#include "app/Session.h"

#include "platform/xcb/Connection.h"

#include <utility>

namespace lumacap {

namespace {

bool isWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
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

bool Session::hasDisplayEnded() const
{
    return m_x11 && m_x11->isBroken();
}

void Session::onDisplayEnded(const QObject *context, const std::function<void()> &ended) const
{
    if (m_x11)
        QObject::connect(m_x11.get(), &xcb::Connection::closed, context, ended);
}

} // namespace lumacap
