#include "StandInSway.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace lumacap::sway {

StandInSway::StandInSway(OnAsked onAsked)
    : m_onAsked(std::move(onAsked))
    , m_listener(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(QFile::encodeName(path()), std::begin(address.sun_path));
    if (bind(m_listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || listen(m_listener, 0) != 0)
        throw std::runtime_error("nobody can listen here");
    m_listening = std::make_unique<QSocketNotifier>(m_listener, QSocketNotifier::Read);
    connect(m_listening.get(), &QSocketNotifier::activated, this, &StandInSway::accept);
}

StandInSway::~StandInSway()
{
    hangUp();
    m_listening.reset();
    close(m_listener);
}

void StandInSway::accept()
{
    m_client = ::accept4(m_listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    m_readable = std::make_unique<QSocketNotifier>(m_client, QSocketNotifier::Read);
    connect(m_readable.get(), &QSocketNotifier::activated, this, &StandInSway::read);
}

void StandInSway::read()
{
    std::array<char, 4096> part{};
    const ssize_t count = recv(m_client, part.data(), part.size(), 0);
    if (count <= 0) {
        m_readable->setEnabled(false);
        return;
    }
    m_read.append(part.data(), count);
    MessageReader reader;
    reader.append(m_read);
    qsizetype used = 0;
    std::vector<Message> questions;
    while (const auto question = reader.take()) {
        used += message(question->type, question->payload).size();
        questions.push_back(*question);
    }
    m_read.remove(0, used);
    for (const Message &question : questions) {
        m_asked.push_back(question);
        m_onAsked(question);
    }
}

void StandInSway::sayBytes(const QByteArray &bytes)
{
    std::ignore = send(m_client, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0);
}

void StandInSway::hangUp()
{
    m_readable.reset();
    if (m_client >= 0)
        close(std::exchange(m_client, -1));
}

QByteArray StandInSway::message(std::uint32_t type, const QByteArray &payload)
{
    QByteArray bytes = encoded(Request{type}, payload);
    return bytes;
}

} // namespace lumacap::sway
