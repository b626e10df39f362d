#pragma once

#include "platform/Result.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <optional>

namespace lumacap::portal {

inline constexpr QLatin1StringView portalName{"org.freedesktop.portal.Desktop"};
inline constexpr QLatin1StringView portalPath{"/org/freedesktop/portal/desktop"};

/// The portal as it is now: the next one of the same name is another.
struct PortalAddress {
    QDBusConnection bus;
    QString owner; ///< Its unique name, so that no other process can answer for it.
};

/// The session's portal, the one service through which desktops let any program ask for what
/// belongs to the person.
class Portal final : public QObject {
    Q_OBJECT

public:
    /// Over a connection of its own, which nothing was asked over before: newer portals must be
    /// told who asks in the connection's first call. `applicationId` is the name of the program's
    /// desktop entry.
    Portal(QDBusConnection connection, QString applicationId);

    const QDBusConnection &connection() const { return m_connection; }

    /// Starts the portal where it does not run, and tells it who we are. Fails in bounded time.
    QCoro::Task<Result<PortalAddress>> reach();
    /// Which version of `interface` it has; nothing where it has none, in bounded time.
    QCoro::Task<std::optional<uint>> versionOf(QString interface);

private:
    QCoro::Task<QString> owner();
    void introduceTo(const QString &owner);

    QDBusConnection m_connection;
    QString m_applicationId;
    QString m_introducedTo;
};

} // namespace lumacap::portal
