#include "app/Session.h"

#include "platform/kwin/OutputOrder.h"
#include "platform/wayland/Connection.h"
#include "platform/wayland/Outputs.h"
#include "platform/wlroots/sway/Ipc.h"
#include "platform/xcb/Connection.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

constexpr int busLimit = 2000; // milliseconds

/// The names that `method` of the bus lists; none where it does not answer.
QStringList namesListed(const QString &method)
{
    const auto question = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, method);
    const QDBusReply<QStringList> answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, busLimit);
    return answer.isValid() ? answer.value() : QStringList();
}

} // namespace

Session::Session() = default;
Session::~Session() = default;
Session::Session(Session &&) noexcept = default;

bool Session::hasDisplay()
{
    return wayland::Connection::answers() || xcb::Connection::answers();
}

void Session::prepareToolkit()
{
    if (!wayland::Connection::answers())
        return;
    // On some desktops the toolkit would rather be a client of the X server that the compositor
    // runs.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "wayland;xcb");
    // The overlay's window gets its role from us and not from the toolkit.
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
}

Session Session::open()
{
    Session session;
    if (auto connection = wayland::Connection::open()) {
        session.m_wayland = std::move(*connection);
        session.m_outputs = std::make_unique<wayland::Outputs>(*session.m_wayland);
        session.m_outputOrder =
            std::make_unique<kwin::OutputOrder>(*session.m_wayland, *session.m_outputs);
        // Once: its socket has room for three who come at the same time.
        session.m_hasSway = sway::Ipc::isOffered(*session.m_wayland);
        for (const QString &method : {u"ListNames"_s, u"ListActivatableNames"_s}) {
            for (const QString &name : namesListed(method))
                session.m_busNames.insert(name);
        }
    } else if (!wayland::Connection::answers()) {
        if (auto server = xcb::Connection::open())
            session.m_x11 = std::move(*server);
    }
    return session;
}

void Session::onDisplayEnded(const QObject *context, const std::function<void()> &ended) const
{
    if (m_x11)
        QObject::connect(m_x11.get(), &xcb::Connection::closed, context, ended);
    if (m_wayland)
        QObject::connect(m_wayland.get(), &wayland::Connection::closed, context, ended);
}

} // namespace lumacap
