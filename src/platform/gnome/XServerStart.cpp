#include "platform/gnome/XServerStart.h"

#include <QCoroFuture>
#include <QPromise>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace lumacap::gnome {

namespace {

constexpr auto startLimit = 10s;

/// What an X client says first: little end first, protocol 11.0, no key. Whatever the server
/// answers, it is there.
constexpr std::array<char, 12> greeting{'l', 0, 11, 0, 0, 0, 0, 0, 0, 0, 0, 0};

/// A socket of ours.
class Socket {
public:
    Socket()
        : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
    }
    ~Socket()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(Socket)

    int descriptor() const { return m_descriptor; }
    /// To the server that listens at `path`, or, where nothing has that path, under that name.
    bool greet(const QByteArray &path) const
    {
        return (connectTo(path) || connectTo('\0' + path))
            && send(m_descriptor, greeting.data(), greeting.size(), MSG_NOSIGNAL)
            == static_cast<ssize_t>(greeting.size());
    }

private:
    bool connectTo(const QByteArray &path) const
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
            return false;
        std::ranges::copy(path, std::begin(address.sun_path));
        const auto size = offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(path.size());
        return connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address),
                       static_cast<socklen_t>(size))
            == 0;
    }

    int m_descriptor;
};

/// Where the server of a display on this computer listens; nothing for one on another.
std::optional<QByteArray> socketPath(const QByteArray &display)
{
    if (!display.startsWith(':'))
        return std::nullopt;
    const QByteArray number = display.sliced(1).split('.').constFirst();
    const bool isNumber = !number.isEmpty()
        && std::ranges::all_of(number, [](char digit) { return digit >= '0' && digit <= '9'; });
    return isNumber ? std::optional(QByteArrayLiteral("/tmp/.X11-unix/X") + number) : std::nullopt;
}

} // namespace

QCoro::Task<bool> xServerAnswers(QByteArray display)
{
    const auto path = socketPath(display);
    const Socket socket;
    if (!path || !socket.greet(*path))
        co_return false;
    QPromise<void> waiting;
    waiting.start();
    QTimer end;
    end.setSingleShot(true);
    QObject::connect(&end, &QTimer::timeout, [&waiting] { waiting.finish(); });
    QSocketNotifier readable(socket.descriptor(), QSocketNotifier::Read);
    QObject::connect(&readable, &QSocketNotifier::activated, &end, [&readable, &end] {
        readable.setEnabled(false);
        end.start(0ms);
    });
    end.start(startLimit);
    co_await waiting.future();
    char first = 0; // of any answer; there is none where the server ended in the midst of its start
    co_return recv(socket.descriptor(), &first, 1, 0) == 1;
}

} // namespace lumacap::gnome
