#include "harness/Sound.h"

#include "harness/WaitFor.h"

#include <QFile>

#include <cstring>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

SoundServer::SoundServer(PrivateDesktop &desktop)
    : m_desktop(desktop)
{
    const QString socket = desktop.folder(u"run"_s) + "/pulse/native"_L1;
    desktop.start(u"pipewire"_s, {u"pipewire"_s});
    require("pipewire",
            [&desktop] { return QFile::exists(desktop.folder(u"run"_s) + "/pipewire-0"_L1); });
    desktop.start(u"wireplumber"_s, {u"wireplumber"_s});
    desktop.start(u"pipewire-pulse"_s, {u"pipewire-pulse"_s});
    require("the sound server", [&socket] { return QFile::exists(socket); });
    require("a sink", [&desktop] {
        return desktop.ask({u"pactl"_s, u"list"_s, u"short"_s, u"sinks"_s}).output.contains("null");
    });
    m_ear = &desktop.start(u"ear"_s, {u"pactl"_s, u"subscribe"_s});
    // The subscription is there when it tells of a client, as each call of the tool is one.
    require("the ear", [&] {
        desktop.ask({u"pactl"_s, u"info"_s});
        return m_ear->output().contains("client");
    });
}

int SoundServer::soundsBegun() const
{
    return static_cast<int>(m_ear->output().count("'new' on sink-input"));
}

bool SoundServer::isPlaying(const QString &name)
{
    const auto playing = m_desktop.ask({u"pactl"_s, u"list"_s, u"sink-inputs"_s}).output;
    return playing.contains(u"event.id = \"%1\""_s.arg(name).toUtf8());
}

SilentSoundServer::SilentSoundServer(PrivateDesktop &desktop)
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const QByteArray path = desktop.folder(u"run/pulse"_s).toLocal8Bit() + "/native";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        throw std::runtime_error("the socket's path is too long");
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    // Listening is enough: the kernel completes the connections, and nobody reads from them.
    if (::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::listen(m_socket, 8) != 0)
        throw std::runtime_error("no socket");
}

SilentSoundServer::~SilentSoundServer()
{
    ::close(m_socket);
}

} // namespace lumacap::harness
