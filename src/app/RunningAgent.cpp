#include "app/RunningAgent.h"

#include "app/ApplicationInterface.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap {

namespace {

constexpr std::chrono::milliseconds answerLimit = 5s;

QDBusMessage messageFor(std::optional<Command> command)
{
    const QString method = command ? u"ActivateAction"_s : u"Activate"_s;
    QDBusMessage message = QDBusMessage::createMethodCall(
        ApplicationInterface::serviceName, ApplicationInterface::objectPath,
        ApplicationInterface::interfaceName, method);
    message.setAutoStartService(false);
    if (command)
        message << QString(row(*command).name) << QVariantList();
    message << QVariantMap();
    return message;
}

} // namespace

QCoro::Task<HandOver> handOverToRunningAgent(QDBusConnection bus, std::optional<Command> command)
{
    if (!bus.isConnected())
        co_return HandOver::NobodyRuns;
    const QDBusPendingCall call =
        bus.asyncCall(messageFor(command), static_cast<int>(answerLimit.count()));
    const QDBusMessage reply = co_await call;
    if (reply.type() != QDBusMessage::ErrorMessage)
        co_return HandOver::Accepted;
    const QString error = reply.errorName();
    const bool nobodyRuns = error == "org.freedesktop.DBus.Error.ServiceUnknown"_L1
        || error == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1;
    co_return nobodyRuns ? HandOver::NobodyRuns : HandOver::Refused;
}

} // namespace lumacap
