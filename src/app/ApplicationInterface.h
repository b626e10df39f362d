#pragma once

#include "app/Command.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>

#include <functional>
#include <vector>

namespace lumacap {

/// How the agent is asked from outside: the object of org.freedesktop.Application on the session
/// bus. The bus name also makes the agent the only one of its session.
class ApplicationInterface final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    static const QString serviceName;
    static const QString objectPath;
    static const QString interfaceName;

    /// What became of the request for the bus name.
    enum class Claim {
        Owned,
        /// Another agent has it.
        Taken,
        /// There is no bus, or it does not answer: the agent runs without this face.
        NoBus,
    };

    /// The object is exported as a part of `owner`.
    ApplicationInterface(QObject *owner, QDBusConnection bus);

    /// Exports the object and asks for the bus name. Waits for the bus, at most five seconds: to be
    /// called before there is a loop that this could hold up.
    Claim claimName();

    /// Gives the face up at once, so that the next start finds no agent here.
    void release();

    /// From now on commands go to `handler`; the ones that came before are given to it at once.
    void setHandler(std::function<void(Command)> handler);

public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): the bus's methods
    /// The agent has no window to bring forward.
    void Activate(const QVariantMap &platformData);
    /// The agent opens no files.
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameters,
                        const QVariantMap &platformData, const QDBusMessage &message);

private:
    QDBusConnection m_bus;
    std::function<void(Command)> m_handler;
    std::vector<Command> m_early;
};

} // namespace lumacap
