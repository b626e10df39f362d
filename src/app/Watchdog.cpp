#include "app/Watchdog.h"

#include <csignal>
#include <tuple>

#include <unistd.h>

namespace lumacap {

namespace {

// A signal handler can know nothing but these.
QByteArray words;
int exitStatus = 0;

void endProcess(int /*signal*/)
{
    std::ignore = write(STDERR_FILENO, words.constData(), static_cast<std::size_t>(words.size()));
    _exit(exitStatus);
}

} // namespace

Watchdog::Watchdog(std::chrono::seconds limit, const QByteArray &lastWords, int status)
{
    words = lastWords;
    exitStatus = status;
    std::signal(SIGALRM, &endProcess);
    alarm(static_cast<unsigned int>(limit.count()));
}

Watchdog::~Watchdog()
{
    alarm(0);
    std::signal(SIGALRM, SIG_DFL);
}

} // namespace lumacap
