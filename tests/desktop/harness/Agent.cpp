#include "harness/Agent.h"

#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <csignal>

#include <gtest/gtest.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

QDBusMessage call(const QString &method)
{
    return QDBusMessage::createMethodCall(u"app.lumacap.Lumacap"_s, u"/app/lumacap/Lumacap"_s,
                                          u"org.freedesktop.Application"_s, method);
}

QDBusMessage actionCall(const QString &action)
{
    auto message = call(u"ActivateAction"_s);
    message << action << QVariantList() << QVariantMap();
    return message;
}

} // namespace

QStringList program(const QStringList &arguments)
{
    return QStringList{testedProgram(QStringLiteral(LUMACAP_PROGRAM))} + arguments;
}

Agent::Agent(TestDesktop &desktop, const QStringList &arguments, const QStringList &wrapper)
    : m_desktop(desktop)
    , m_connectionName(desktop.newLog(u"bus"_s))
    , m_bus(QDBusConnection::connectToBus(QString::fromLocal8Bit(desktop.bus().address()),
                                          m_connectionName))
    , m_process(&desktop.start(u"agent"_s, wrapper + program(arguments)))
{
}

Agent::~Agent()
{
    // A broken rule, or what a sanitizer found, perhaps only at the end: whatever the test looked
    // at.
    const int signal = m_process->terminate(usualLimit).signal;
    if (signal == SIGABRT || signal == SIGSEGV || signal == SIGBUS || signal == SIGILL)
        ADD_FAILURE() << "the agent ended by signal " << signal << ": "
                      << m_process->errors().toStdString();
    m_desktop.stop(*m_process);
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void Agent::requireReady()
{
    require("the agent", [this] {
        if (m_process->ending())
            throw std::runtime_error("the agent ended: " + m_process->errors().toStdString());
        const QDBusReply<uint> owner = m_bus.interface()->servicePid(u"app.lumacap.Lumacap"_s);
        return owner.isValid() && owner.value() == static_cast<uint>(m_process->pid());
    });
    // The name comes early; calls are answered when the rest is there, too.
    require("the agent's answer", [this] { return activatePlainly(); });
}

bool Agent::activate(const QString &action)
{
    return m_bus.call(actionCall(action)).type() == QDBusMessage::ReplyMessage;
}

void Agent::activateSoon(const QString &action)
{
    m_bus.send(actionCall(action));
}

bool Agent::activatePlainly()
{
    auto message = call(u"Activate"_s);
    message << QVariantMap();
    return m_bus.call(message).type() == QDBusMessage::ReplyMessage;
}

} // namespace lumacap::harness
