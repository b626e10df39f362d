#include "app/TerminationSignals.h"

#include "graphics/Fatal.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <tuple>

#include <fcntl.h>
#include <unistd.h>

namespace lumacap {

namespace {

constexpr std::array endingSignals{SIGTERM, SIGINT, SIGHUP};

/// Read end and write end. Process-wide, because a signal handler can know nothing else.
std::array<int, 2> pipeEnds{-1, -1};

void wakeMainLoop(int /*signal*/)
{
    const int interrupted = errno; // of whatever the signal came between
    const char byte = 0;
    std::ignore = write(pipeEnds[1], &byte, 1);
    errno = interrupted;
}

int openPipe()
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        fatal("no pipe for the termination signals");
    return pipeEnds[0];
}

void setHandlers(void (*handler)(int))
{
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endingSignals) {
        struct sigaction earlier{};
        sigaction(signal, nullptr, &earlier);
        if (earlier.sa_handler != SIG_IGN) // as under nohup
            sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminationSignals::TerminationSignals()
    : m_notifier(openPipe(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        std::ignore = read(pipeEnds[0], &byte, 1);
        Q_EMIT requested();
    });
    setHandlers(&wakeMainLoop);
}

TerminationSignals::~TerminationSignals()
{
    setHandlers(SIG_DFL);
    m_notifier.setEnabled(false);
    for (const int end : pipeEnds)
        close(end);
}

} // namespace lumacap
