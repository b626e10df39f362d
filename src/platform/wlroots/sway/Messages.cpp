#include "platform/wlroots/sway/Messages.h"

#include <QByteArrayView>
#include <QtEndian>

#include <utility>

namespace lumacap::sway {

namespace {

constexpr QByteArrayView magic("i3-ipc");
constexpr qsizetype headerSize = 14;
constexpr std::uint32_t largestPayload = 32U << 20; // a tree of ten thousand windows

/// i3 speaks the machine's own byte order.
void appendNumber(QByteArray &bytes, std::uint32_t number)
{
    bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

std::uint32_t numberAt(const QByteArray &bytes, qsizetype index)
{
    return qFromUnaligned<std::uint32_t>(bytes.constData() + index);
}

} // namespace

QByteArray encoded(Request request, const QByteArray &payload)
{
    QByteArray bytes = magic.toByteArray();
    appendNumber(bytes, static_cast<std::uint32_t>(payload.size()));
    appendNumber(bytes, std::to_underlying(request));
    return bytes + payload;
}

void MessageReader::append(const QByteArray &bytes)
{
    if (!m_isBroken)
        m_bytes += bytes;
}

std::optional<Message> MessageReader::take()
{
    const QByteArrayView start = QByteArrayView(m_bytes).first(qMin(m_bytes.size(), magic.size()));
    if (m_isBroken || start != magic.first(start.size())) {
        m_isBroken = true;
        return std::nullopt;
    }
    if (m_bytes.size() < headerSize)
        return std::nullopt;
    const std::uint32_t size = numberAt(m_bytes, magic.size());
    if (size > largestPayload) {
        m_isBroken = true;
        return std::nullopt;
    }
    if (m_bytes.size() - headerSize < qsizetype{size})
        return std::nullopt;
    Message message{numberAt(m_bytes, magic.size() + 4), m_bytes.mid(headerSize, size)};
    m_bytes.remove(0, headerSize + qsizetype{size});
    return message;
}

} // namespace lumacap::sway
