#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>

namespace lumacap::wayland {

/// Writes bytes to a reader, as fast as it takes them, without ever waiting for it.
class PipeWriter final : public QObject {
    Q_OBJECT

public:
    /// Takes `descriptor` over, the writing end of a reader's pipe, and closes it at the end. A
    /// reader that takes nothing for as long as `stall` is given up. Where SIGPIPE is ignored.
    PipeWriter(int descriptor, QByteArray bytes,
               std::chrono::milliseconds stall = std::chrono::seconds(20));
    Q_DISABLE_COPY_MOVE(PipeWriter)
    ~PipeWriter() override;

    /// Begins to write.
    void start();

Q_SIGNALS:
    /// All is written, or the reader has gone or is given up. At the earliest within `start`.
    void ended();

private:
    void write();
    void end();

    int m_descriptor;
    QByteArray m_bytes;
    qsizetype m_written = 0;
    QSocketNotifier m_writable;
    QTimer m_stalled;
};

} // namespace lumacap::wayland
