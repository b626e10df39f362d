#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>

namespace lumacap::gnome {

/// How a stand-in for the shell behaves when it is asked for a cast.
enum class Behaviour {
    Willing,
    RefusesSessions,
    AnswersSessionsLate, ///< when `answerLateSession` is called
    RefusesTheMonitor,
    RefusesToStart,
    BringsNoNode,
    SaysNonsense
};

/// Speaks the shell's part of a cast, for faults that a real shell does not have on demand.
class StandInShell : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Mutter.ScreenCast")

public:
    StandInShell(const QDBusConnection &bus, Behaviour behaviour);

    void answerLateSession();
    /// What was called, oldest first, with the monitor and the options of a recording.
    const QStringList &calls() const { return m_calls; }

public Q_SLOTS:
    QDBusObjectPath CreateSession(const QVariantMap &options);

private:
    friend class StandInSession;

    QDBusConnection m_bus;
    Behaviour m_behaviour;
    QDBusMessage m_late;
    QStringList m_calls;
};

/// The session of a stand-in's cast.
class StandInSession : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Mutter.ScreenCast.Session")

public:
    explicit StandInSession(StandInShell &shell);

public Q_SLOTS:
    QDBusObjectPath RecordMonitor(const QString &connector, const QVariantMap &options);
    void Start();
    void Stop();

private:
    StandInShell &m_shell;
};

} // namespace lumacap::gnome
