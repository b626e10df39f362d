#include "platform/wayland/clipboard/PipeWriter.h"

#include <cerrno>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace lumacap::wayland {

namespace {

/// As much as fits into a pipe of a user's: with sixteen pages the two programs would take turns.
constexpr int pipeSize = 1024 * 1024;

} // namespace

PipeWriter::PipeWriter(int descriptor, QByteArray bytes, std::chrono::milliseconds stall)
    : m_descriptor(descriptor)
    , m_bytes(std::move(bytes))
    , m_writable(descriptor, QSocketNotifier::Write)
{
    m_writable.setEnabled(false);
    connect(&m_writable, &QSocketNotifier::activated, this, &PipeWriter::write);
    m_stalled.setSingleShot(true);
    m_stalled.setInterval(stall);
    connect(&m_stalled, &QTimer::timeout, this, &PipeWriter::end);
}

PipeWriter::~PipeWriter()
{
    m_writable.setEnabled(false); // before its descriptor goes
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void PipeWriter::start()
{
    const int flags = fcntl(m_descriptor, F_GETFL);
    if (flags < 0 || fcntl(m_descriptor, F_SETFL, flags | O_NONBLOCK) != 0)
        return end();
    std::ignore = fcntl(m_descriptor, F_SETPIPE_SZ, pipeSize); // refused, it is only slower
    m_stalled.start();
    write();
}

void PipeWriter::write()
{
    while (m_written < m_bytes.size()) {
        const ssize_t count = ::write(m_descriptor, m_bytes.constData() + m_written,
                                      static_cast<std::size_t>(m_bytes.size() - m_written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EAGAIN) {
            m_writable.setEnabled(true);
            return;
        }
        if (count < 0)
            return end();
        m_written += count;
        m_stalled.start();
    }
    end();
}

void PipeWriter::end()
{
    if (m_descriptor < 0)
        return;
    m_writable.setEnabled(false);
    m_stalled.stop();
    close(std::exchange(m_descriptor, -1));
    Q_EMIT ended();
}

} // namespace lumacap::wayland
