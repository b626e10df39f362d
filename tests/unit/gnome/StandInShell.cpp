#include "StandInShell.h"

#include <QDBusMessage>

#include <stdexcept>

namespace lumacap::gnome {

using namespace Qt::StringLiterals;

namespace {

const QString session = u"/org/gnome/Mutter/ScreenCast/Session/u1"_s;
const QString stream = u"/org/gnome/Mutter/ScreenCast/Stream/u1"_s;

} // namespace

StandInShell::StandInShell(const QDBusConnection &bus, Behaviour behaviour)
    : m_bus(bus)
    , m_behaviour(behaviour)
{
    const auto slots = QDBusConnection::ExportAllSlots;
    if (!m_bus.registerObject(u"/org/gnome/Mutter/ScreenCast"_s, this, slots)
        || !m_bus.registerObject(session, new StandInSession(*this), slots)
        || !m_bus.registerService(u"org.gnome.Mutter.ScreenCast"_s))
        throw std::runtime_error("no stand-in for the shell");
}

QDBusObjectPath StandInShell::CreateSession(const QVariantMap & /*options*/)
{
    m_calls.append(u"CreateSession"_s);
    if (m_behaviour == Behaviour::RefusesSessions)
        sendErrorReply(QDBusError::AccessDenied, u"no"_s);
    if (m_behaviour == Behaviour::AnswersSessionsLate) {
        setDelayedReply(true);
        m_late = message();
    }
    if (m_behaviour == Behaviour::SaysNonsense) {
        setDelayedReply(true);
        m_bus.send(message().createReply(u"a session"_s));
    }
    return QDBusObjectPath(session);
}

void StandInShell::answerLateSession()
{
    m_bus.send(m_late.createReply(QVariant::fromValue(QDBusObjectPath(session))));
}

StandInSession::StandInSession(StandInShell &shell)
    : QObject(&shell)
    , m_shell(shell)
{
}

QDBusObjectPath StandInSession::RecordMonitor(const QString &connector, const QVariantMap &options)
{
    m_shell.m_calls.append(
        u"RecordMonitor %1 %2"_s.arg(connector).arg(options.value(u"cursor-mode"_s).toUInt()));
    if (m_shell.m_behaviour == Behaviour::RefusesTheMonitor)
        sendErrorReply(QDBusError::Failed, u"Unknown monitor"_s);
    return QDBusObjectPath(stream);
}

void StandInSession::Start()
{
    m_shell.m_calls.append(u"Start"_s);
    if (m_shell.m_behaviour == Behaviour::RefusesToStart)
        return sendErrorReply(QDBusError::Failed, u"no PipeWire"_s);
    if (m_shell.m_behaviour == Behaviour::BringsNoNode)
        return;
    auto signal = QDBusMessage::createSignal(stream, u"org.gnome.Mutter.ScreenCast.Stream"_s,
                                             u"PipeWireStreamAdded"_s);
    signal << uint{42};
    m_shell.m_bus.send(signal);
}

void StandInSession::Stop()
{
    m_shell.m_calls.append(u"Stop"_s);
}

} // namespace lumacap::gnome
