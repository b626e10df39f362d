#include "app/RunningAgent.h"

#include "app/ApplicationInterface.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap {

namespace {

constexpr std::chrono::milliseconds answerLimit = 5s;
/// The bus may give a call up so much before its limit: its clocks are coarse.
constexpr std::chrono::milliseconds clockTolerance = 500ms;

/// What a call gets where no agent runs, and where one that is ending has given up its face.
constexpr std::array errorsOfAbsence{
    "org.freedesktop.DBus.Error.ServiceUnknown"_L1,
    "org.freedesktop.DBus.Error.NameHasNoOwner"_L1,
    "org.freedesktop.DBus.Error.UnknownObject"_L1,
};

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
    const QDeadlineTimer deadline(answerLimit);
    QString error;
    do {
        const auto limit = std::max<qint64>(1, deadline.remainingTime());
        const QDBusPendingCall call = bus.asyncCall(messageFor(command), static_cast<int>(limit));
        const QDBusMessage reply = co_await call;
        if (reply.type() != QDBusMessage::ErrorMessage)
            co_return HandOver::Accepted;
        error = reply.errorName();
        // An agent that ends drops the calls it has not read; the next one finds its successor, or
        // none.
    } while (error == "org.freedesktop.DBus.Error.NoReply"_L1
             && deadline.remainingTime() > clockTolerance.count());
    const bool nobodyRuns = std::ranges::find(errorsOfAbsence, error) != errorsOfAbsence.end();
    co_return nobodyRuns ? HandOver::NobodyRuns : HandOver::Refused;
}

} // namespace lumacap
