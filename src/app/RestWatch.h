#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace lumacap {

/// Notices when the program has come to rest: nothing has happened for a while in its main loop,
/// and since its last rest it has worked enough for rest to be worth a step. A program at rest is
/// not woken up by it.
class RestWatch final : public QObject {
    Q_OBJECT

public:
    /// Watches the event loop of this thread, which has an application object, for calms of at
    /// least `calm`.
    explicit RestWatch(std::chrono::milliseconds calm = std::chrono::seconds(2));
    ~RestWatch() override;
    Q_DISABLE_COPY_MOVE(RestWatch)

    /// Whether it will still wake up this thread, to see whether the calm has lasted.
    bool isWaiting() const { return m_wakeUp.isActive(); }

Q_SIGNALS:
    void cameToRest();

private:
    void onAboutToWait();
    void onWokenUp();

    const std::chrono::milliseconds m_calm;
    QTimer m_wakeUp;
    QDeadlineTimer m_endOfCalm;
    long m_pagesAtRest = 0; ///< of the system's count of page faults
    bool m_isOwnWakeUp = false;
};

} // namespace lumacap
