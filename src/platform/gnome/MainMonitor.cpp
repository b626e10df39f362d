#include "platform/gnome/MainMonitor.h"

#include "platform/Spawn.h"
#include "platform/wayland/Outputs.h"

#include <QCoroDBusPendingCall>
#include <QCoroSignal>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QPointer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::gnome {

namespace {

const QString service = u"org.gnome.Mutter.DisplayConfig"_s;
const QString path = u"/org/gnome/Mutter/DisplayConfig"_s;

constexpr auto answerLimit = 3s;

/// One of the areas that the person has arranged: the connector of its first monitor, if it is the
/// primary one. Moves `area` past it.
std::optional<QString> connectorIfPrimary(const QDBusArgument &areas)
{
    int x = 0;
    int y = 0;
    double scale = 0;
    uint transform = 0;
    bool isPrimary = false;
    QString connector;
    QVariantMap properties;
    areas.beginStructure();
    areas >> x >> y >> scale >> transform >> isPrimary;
    areas.beginArray();
    while (!areas.atEnd()) {
        QString name;
        QString vendor;
        QString product;
        QString serial;
        areas.beginStructure();
        areas >> name >> vendor >> product >> serial;
        areas.endStructure();
        if (connector.isEmpty())
            connector = name;
    }
    areas.endArray();
    areas >> properties;
    areas.endStructure();
    return isPrimary && !connector.isEmpty() ? std::optional(connector) : std::nullopt;
}

} // namespace

std::optional<QString> primaryConnector(const QDBusMessage &state)
{
    // serial; monitors with their modes; areas with the monitors that show them; the rest
    constexpr auto form = "ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})a{sv}"_L1;
    constexpr qsizetype areasPlace = 2;
    if (state.type() != QDBusMessage::ReplyMessage || state.signature() != form)
        return std::nullopt;
    const auto areas = qvariant_cast<QDBusArgument>(state.arguments().at(areasPlace));
    std::optional<QString> primary;
    areas.beginArray();
    while (!areas.atEnd()) {
        const auto connector = connectorIfPrimary(areas);
        if (!primary)
            primary = connector;
    }
    areas.endArray();
    return primary;
}

MainMonitor::MainMonitor(QDBusConnection bus, wayland::Outputs &outputs)
    : m_bus(std::move(bus))
    , m_outputs(outputs)
{
    // From anybody: to know whose name it is, the toolkit would wait for the bus. All that comes of
    // it is a question.
    m_bus.connect(QString(), path, service, u"MonitorsChanged"_s, this, SLOT(ask()));
    ask();
}

QCoro::Task<> MainMonitor::known()
{
    if (m_questions > 0)
        co_await qCoro(this, &MainMonitor::answered, answerLimit);
}

void MainMonitor::ask()
{
    spawn(follow());
}

QCoro::Task<> MainMonitor::follow()
{
    const QPointer self{this};
    ++m_questions;
    const auto question =
        QDBusMessage::createMethodCall(service, path, service, u"GetCurrentState"_s);
    const QDBusMessage state = co_await m_bus.asyncCall(
        question, static_cast<int>(std::chrono::milliseconds(answerLimit).count()));
    if (!self)
        co_return;
    if (const auto connector = primaryConnector(state))
        m_outputs.setMain(*connector);
    if (--m_questions == 0)
        Q_EMIT answered();
}

} // namespace lumacap::gnome
