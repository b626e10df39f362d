#include "harness/wayland/RemoteInput.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>

#include <stdexcept>

#include <linux/input-event-codes.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.gnome.Mutter.RemoteDesktop"_s;
const QString sessionInterface = u"org.gnome.Mutter.RemoteDesktop.Session"_s;

/// Further down than the shell's panel is high.
constexpr int panelReach = 64;

} // namespace

RemoteInput::RemoteInput(const QDBusConnection &bus)
    : m_bus(bus)
{
    const QDBusReply<QDBusObjectPath> session = m_bus.call(QDBusMessage::createMethodCall(
        service, u"/org/gnome/Mutter/RemoteDesktop"_s, service, u"CreateSession"_s));
    if (!session.isValid())
        throw std::runtime_error("no input: " + session.error().message().toStdString());
    m_session = session.value().path();
    tell("Start", {});
    // A pointer that knows no place: into the upper left corner, against which it stops.
    moveBy({-100000, -100000});
    // The first key makes the keyboard, which is of no use to whoever had none before.
    key(evdev::shift, Way::Down);
    key(evdev::shift, Way::Up);
}

RemoteInput::~RemoteInput()
{
    m_bus.call(QDBusMessage::createMethodCall(service, m_session, sessionInterface, u"Stop"_s));
}

void RemoteInput::moveTo(QPoint place)
{
    // Beside its panel the shell stops a pointer that goes to another monitor: below, it is free.
    if (place.y() < panelReach || m_place.y() < panelReach) {
        moveBy({0, panelReach - m_place.y()});
        m_place.setY(panelReach);
        moveBy({place.x() - m_place.x(), 0});
        m_place.setX(place.x());
    }
    moveBy(place - m_place);
    m_place = place;
}

void RemoteInput::moveBy(QPoint distance) const
{
    tell("NotifyPointerMotionRelative", {double(distance.x()), double(distance.y())});
}

void RemoteInput::button(Button button, Way way)
{
    static constexpr int codes[]{BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};
    tell("NotifyPointerButton", {codes[static_cast<int>(button)], way == Way::Down});
}

void RemoteInput::key(std::uint32_t code, Way way)
{
    tell("NotifyKeyboardKeycode", {code, way == Way::Down});
}

void RemoteInput::tell(const char *method, const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(service, m_session, sessionInterface,
                                                  QString::fromLatin1(method));
    message.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(message);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error("no input: " + answer.errorMessage().toStdString());
}

} // namespace lumacap::harness
