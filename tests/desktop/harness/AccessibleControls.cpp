#include "harness/AccessibleControls.h"

#include "harness/WaitFor.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUuid>

#include <algorithm>
#include <stdexcept>
#include <tuple>

using namespace Qt::StringLiterals;

namespace lumacap::harness {

namespace {

const QString accessible = u"org.a11y.atspi.Accessible"_s;
constexpr int answerLimit = 5000; // milliseconds

/// Bits of a state set, as the AT-SPI protocol numbers them.
enum class State { Active = 1, Checked = 4, Enabled = 8, Focused = 12, Showing = 25 };

QDBusMessage call(const QDBusConnection &bus, const QString &service, const QString &path,
                  const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, answerLimit);
}

QString addressOfAccessibility(TestDesktop &desktop)
{
    const QString name = u"find-"_s + QUuid::createUuid().toString();
    const QDBusConnection session =
        QDBusConnection::connectToBus(QString::fromLocal8Bit(desktop.bus().address()), name);
    const QDBusMessage answer = call(session, u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                     u"org.a11y.Bus"_s, u"GetAddress"_s, {});
    QDBusConnection::disconnectFromBus(name);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error("no bus of assistive technology");
    return answer.arguments().first().toString();
}

bool has(quint64 states, State state)
{
    return (states >> static_cast<int>(state) & 1) != 0;
}

} // namespace

void AccessibleControls::enable(TestDesktop &desktop)
{
    desktop.set("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
}

AccessibleControls::AccessibleControls(TestDesktop &desktop)
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(addressOfAccessibility(desktop), m_connectionName))
{
}

AccessibleControls::~AccessibleControls()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

std::vector<AccessibleControls::Node> AccessibleControls::children(const Node &node) const
{
    const QDBusMessage answer = call(m_bus, node.bus, node.path, accessible, u"GetChildren"_s, {});
    std::vector<Node> nodes;
    if (answer.type() != QDBusMessage::ReplyMessage)
        return nodes;
    const auto list = answer.arguments().first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString bus;
        QDBusObjectPath path;
        list.beginStructure();
        list >> bus >> path;
        list.endStructure();
        nodes.push_back({bus, path.path()});
    }
    list.endArray();
    return nodes;
}

QString AccessibleControls::nameOf(const Node &node) const
{
    const QDBusMessage name = call(m_bus, node.bus, node.path, u"org.freedesktop.DBus.Properties"_s,
                                   u"Get"_s, {accessible, u"Name"_s});
    if (name.type() != QDBusMessage::ReplyMessage)
        return {};
    return name.arguments().first().value<QDBusVariant>().variant().toString();
}

AccessibleControl AccessibleControls::controlAt(const Node &node) const
{
    const QDBusMessage role = call(m_bus, node.bus, node.path, accessible, u"GetRoleName"_s, {});
    const QDBusMessage state = call(m_bus, node.bus, node.path, accessible, u"GetState"_s, {});
    const QDBusMessage extents = call(m_bus, node.bus, node.path, u"org.a11y.atspi.Component"_s,
                                      u"GetExtents"_s, {quint32{0}});
    AccessibleControl control{};
    control.name = nameOf(node);
    if (role.type() == QDBusMessage::ReplyMessage)
        control.role = role.arguments().first().toString();
    if (extents.type() == QDBusMessage::ReplyMessage) {
        const auto place = extents.arguments().first().value<QDBusArgument>();
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        place.beginStructure();
        place >> x >> y >> width >> height;
        place.endStructure();
        control.place = {x, y, width, height};
    }
    if (state.type() == QDBusMessage::ReplyMessage) {
        const auto words = qdbus_cast<QList<quint32>>(state.arguments().first());
        const quint64 states = words.size() < 2 ? 0 : quint64{words.at(1)} << 32U | words.at(0);
        control.isShowing = has(states, State::Showing);
        control.isEnabled = has(states, State::Enabled);
        control.isChecked = has(states, State::Checked);
        control.isFocused = has(states, State::Focused);
        control.isActive = has(states, State::Active);
    }
    return control;
}

void AccessibleControls::collect(const Node &node, std::vector<Node> &found) const
{
    for (const Node &child : children(node)) {
        found.push_back(child);
        collect(child, found);
    }
}

std::vector<AccessibleControls::Node> AccessibleControls::applications() const
{
    return children({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s});
}

std::vector<AccessibleControls::Node> AccessibleControls::nodes() const
{
    std::vector<Node> found;
    for (const Node &application : applications())
        collect(application, found);
    return found;
}

std::vector<AccessibleControl> AccessibleControls::all() const
{
    std::vector<AccessibleControl> controls;
    for (const Node &node : nodes()) {
        const AccessibleControl control = controlAt(node);
        if (control.isShowing)
            controls.push_back(control);
    }
    return controls;
}

std::vector<AccessibleControl> AccessibleControls::showing(const QString &name) const
{
    std::vector<AccessibleControl> controls;
    for (const Node &node : nodes()) {
        if (nameOf(node) != name)
            continue;
        const AccessibleControl control = controlAt(node);
        if (control.isShowing)
            controls.push_back(control);
    }
    return controls;
}

std::optional<AccessibleControl> AccessibleControls::find(const QString &name,
                                                          std::size_t index) const
{
    std::vector<AccessibleControl> found;
    std::ignore = waitFor([&] {
        found = showing(name);
        return found.size() > index;
    });
    return found.size() > index ? std::optional(found.at(index)) : std::nullopt;
}

QString AccessibleControls::focused() const
{
    for (const AccessibleControl &one : all()) {
        if (one.isFocused && !one.name.isEmpty() && one.role != u"frame"_s)
            return one.name;
    }
    return {};
}

bool AccessibleControls::hasActiveWindow() const
{
    const auto isActive = [this](const Node &window) { return controlAt(window).isActive; };
    return std::ranges::any_of(applications(), [&](const Node &application) {
        return std::ranges::any_of(children(application), isActive);
    });
}

bool AccessibleControls::shows(const QString &name) const
{
    return !showing(name).empty();
}

} // namespace lumacap::harness
