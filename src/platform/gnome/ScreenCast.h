#pragma once

#include "platform/Result.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace lumacap::gnome {

/// Where the pointer of a cast is: painted into its pictures, or told beside them.
enum class CastPointer { Painted, Told };

/// A cast of one monitor, which the shell makes and PipeWire carries
/// (org.gnome.Mutter.ScreenCast). Ends with the object, also where its beginning is still on its
/// way.
class ScreenCast final : public QObject {
    Q_OBJECT

public:
    explicit ScreenCast(QDBusConnection bus);
    ~ScreenCast() override;
    Q_DISABLE_COPY_MOVE(ScreenCast)

    /// Begins to cast the monitor on `connector` ("DP-1"). The answer is the cast's node in
    /// PipeWire. Called once; the object outlives the task.
    QCoro::Task<Result<std::uint32_t>> start(QString connector, CastPointer pointer);

Q_SIGNALS:
    /// The shell has answered whether there is a session.
    void sessionAnswered();
    void nodeAdded();

private Q_SLOTS:
    void takeNode(uint node);

private:
    QCoro::Task<Result<void>> createSession();
    QCoro::Task<Result<QDBusObjectPath>> recordMonitor(QString connector, CastPointer pointer);
    void requestSession();
    void takeSession(const QDBusMessage &answer);

    QDBusConnection m_bus;
    QString m_shell; ///< its unique name on the bus
    QString m_session; ///< empty until there is one
    std::optional<std::uint32_t> m_node;
};

} // namespace lumacap::gnome
