#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace lumacap {

/// Tells on the main loop that the process was asked to end by SIGTERM, SIGINT or SIGHUP. At most
/// one exists at a time.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    TerminationSignals();
    ~TerminationSignals() override;
    Q_DISABLE_COPY_MOVE(TerminationSignals)

Q_SIGNALS:
    void requested();

private:
    QSocketNotifier m_notifier;
};

} // namespace lumacap
