#pragma once

#include "platform/Result.h"
#include "platform/portal/Portal.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QHash>
#include <QObject>
#include <QTimer>
#include <QVariant>

#include <chrono>
#include <coroutine>

class QDBusPendingCallWatcher;

namespace lumacap::portal {

/// What the portal is asked for.
struct Question {
    QString interface;
    QString method;
    QVariantList arguments; ///< Those before the options, which come last in every such method.
    QVariantMap options; ///< Without the token, which each request has of its own.
    std::chrono::milliseconds limit{}; ///< Long enough for a person, where one is asked.
};

/// A question that the portal answers later, when a person was asked perhaps: the call names an
/// object, and that object's signal brings the answer.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    /// What the portal answers. Fails in words where the person or the desktop says no, where the
    /// portal goes or answers what makes no sense, and when the limit is over or `asker` has gone:
    /// then what the portal shows is closed.
    static QCoro::Task<Result<QVariantMap>> ask(PortalAddress portal, Question question,
                                                QObject *asker);

    ~PortalRequest() override;
    Q_DISABLE_COPY_MOVE(PortalRequest)

private Q_SLOTS:
    void receive(const QDBusMessage &response);

private:
    struct Ended;

    PortalRequest(PortalAddress portal, const QObject *asker);
    void start(Question question);
    void follow(const QDBusPendingCallWatcher &call);
    void conclude(const QDBusMessage &response);
    void giveUp(const QString &reason);
    void end(Result<QVariantMap> outcome);

    PortalAddress m_portal;
    QString m_token;
    QString m_handle; ///< Predicted, until the portal has told it.
    bool m_isHandleTold = false;
    QHash<QString, QDBusMessage> m_strays; ///< Answers that came before it was told, by path.
    QDBusServiceWatcher m_owner;
    QTimer m_limit;
    bool m_hasEnded = false;
    Result<QVariantMap> m_outcome; ///< Known once it has ended.
    std::coroutine_handle<> m_waiting;
};

} // namespace lumacap::portal
