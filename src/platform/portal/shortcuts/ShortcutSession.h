#pragma once

#include "platform/Result.h"
#include "platform/portal/Portal.h"
#include "platform/portal/shortcuts/BoundShortcut.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>

namespace lumacap::portal {

inline constexpr QLatin1StringView shortcutsInterface{"org.freedesktop.portal.GlobalShortcuts"};

/// What the portal keeps for us while our shortcuts are to work: a set of them, bound once. Closed
/// when the object goes.
class ShortcutSession final : public QObject {
    Q_OBJECT

public:
    explicit ShortcutSession(PortalAddress portal);
    Q_DISABLE_COPY_MOVE(ShortcutSession)
    ~ShortcutSession() override;

    /// Opens the session and binds `shortcuts`, after asking the person where the desktop wants
    /// that; answers the ids of those that are bound. Fails in bounded time, and when the session
    /// goes meanwhile. Once.
    QCoro::Task<Result<QStringList>> bind(QList<BoundShortcut> shortcuts);

Q_SIGNALS:
    /// The shortcut of this id was pressed.
    void activated(const QString &id);
    /// The portal has ended the session.
    void closed();
    /// The portal has gone, and with it the session.
    void lost();

private Q_SLOTS:
    void receiveActivated(const QDBusMessage &signal);
    void receiveClosed();

private:
    void listen();

    PortalAddress m_portal;
    QString m_token;
    QString m_handle; ///< Predicted, until the portal has told it.
    bool m_isOpen = false;
    QDBusServiceWatcher m_owner;
};

} // namespace lumacap::portal
