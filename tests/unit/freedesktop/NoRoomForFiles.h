#pragma once

#include <QtGlobal>

#include <csignal>
#include <tuple>

#include <sys/resource.h>

namespace lumacap::tests {

/// While it lives, writing a single byte to a file fails as on a full disk, for root too.
class NoRoomForFiles {
public:
    NoRoomForFiles()
        : m_handler{std::signal(SIGXFSZ, SIG_IGN)}
    {
        getrlimit(RLIMIT_FSIZE, &m_previous);
        const rlimit none{.rlim_cur = 0, .rlim_max = m_previous.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    Q_DISABLE_COPY_MOVE(NoRoomForFiles)
    ~NoRoomForFiles()
    {
        setrlimit(RLIMIT_FSIZE, &m_previous);
        std::ignore = std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_previous{};
    void (*m_handler)(int);
};

} // namespace lumacap::tests
