#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace lumacap::sway {

/// What can be asked of the compositor, by its numbers.
enum class Request : std::uint32_t {
    RunCommand = 0,
    Subscribe = 2,
    GetOutputs = 3,
    GetTree = 4,
    GetVersion = 7,
    GetConfig = 9,
    GetBindingState = 12,
};

/// What it tells those who subscribed to it.
enum class Event : std::uint32_t {
    Workspace = 0x80000000,
    Mode = 0x80000002,
    Window = 0x80000003,
    Binding = 0x80000005,
};

/// One message of the compositor, whose type is a `Request` it answers or an `Event`.
struct Message {
    std::uint32_t type = 0;
    QByteArray payload; ///< JSON

    bool isEvent() const { return (type & 0x80000000) != 0; }
    friend bool operator==(const Message &, const Message &) = default;
};

/// A request as it is sent.
QByteArray encoded(Request request, const QByteArray &payload);

/// Cuts what arrives in pieces of any size into messages.
class MessageReader {
public:
    /// Bytes, which follow those told before.
    void append(const QByteArray &bytes);
    /// The next message that is complete, once.
    std::optional<Message> take();
    /// Whether what came is no message, or one larger than any that the compositor has reason to
    /// send. There is no more then.
    bool isBroken() const { return m_isBroken; }

private:
    QByteArray m_bytes;
    bool m_isBroken = false;
};

} // namespace lumacap::sway
