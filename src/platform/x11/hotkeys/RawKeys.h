#pragma once

#include "platform/x11/HeldKeys.h"

#include <QCoroTask>
#include <QObject>

#include <cstdint>
#include <functional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// The keys of the keyboard itself, whoever the server gives them to. It wakes up at every key
/// while it listens.
class RawKeys final : public QObject {
public:
    /// `held` are the keys that were down before.
    using OnPressed =
        std::function<void(std::uint8_t key, const KeyCodes &held, std::uint32_t time)>;

    /// By a connection that outlives the object. `onPressed` is called for each press by a finger,
    /// with the server's time in milliseconds.
    RawKeys(xcb::Connection &connection, OnPressed onPressed);
    Q_DISABLE_COPY_MOVE(RawKeys)
    ~RawKeys() override;

    /// Starts and stops listening; nothing where the server can't tell of the keys that another
    /// client holds.
    void listen();
    void stop();

private:
    QCoro::Task<> learnHeldKeys();
    void receive(const void *event);
    void select(std::uint32_t events);

    xcb::Connection &m_connection;
    OnPressed m_onPressed;
    bool m_isOffered;
    bool m_isListening = false;
    KeyCodes m_held;
    KeyCodes m_told; // told of since listening began
    int m_listenings = 0;
};

} // namespace lumacap::x11
