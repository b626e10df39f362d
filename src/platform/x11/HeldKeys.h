#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <bitset>

struct xcb_connection_t;
struct xcb_query_keymap_reply_t;

namespace lumacap::x11 {

/// Key codes of keys that are down.
using KeyCodes = std::bitset<256>;

/// The keys that the server said are down.
KeyCodes pressedKeys(const xcb_query_keymap_reply_t &reply);

/// The keys that are down now, but for modifiers, which do nothing alone. Two round trips.
KeyCodes heldKeys(xcb_connection_t *connection);

/// Keeps keys that are down from everybody else until they are released, a second at most.
///
/// A key that ends a window which had the keyboard would go on in whoever has it next: one that is
/// held is repeated there, and released there.
class HeldKeys final : public QObject {
public:
    /// Takes the keyboard by `connection`, which outlives the object; nothing when no key is held.
    HeldKeys(xcb_connection_t *connection, const KeyCodes &keys);
    Q_DISABLE_COPY_MOVE(HeldKeys)
    ~HeldKeys() override;

private:
    void look();
    void letGo();

    xcb_connection_t *m_connection;
    KeyCodes m_keys;
    QDeadlineTimer m_limit;
    QTimer m_again; // while it has the keyboard
};

} // namespace lumacap::x11
