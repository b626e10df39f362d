#pragma once

#include "platform/HotKeyBook.h"
#include "platform/x11/hotkeys/KeyGrabs.h"
#include "platform/x11/hotkeys/KeyPresses.h"
#include "platform/x11/hotkeys/KeyboardHolder.h"
#include "platform/x11/hotkeys/ModifierKeys.h"
#include "platform/x11/hotkeys/RawKeys.h"

#include <QCoroTask>
#include <QObject>

#include <memory>
#include <optional>

namespace lumacap::x11 {

/// Shortcuts that the server sends to us instead of the window that has the keyboard. While another
/// client holds the keyboard it sends them there all the same, and they are heard beside it.
class X11HotkeyService final : public QObject, public HotkeyService {
public:
    /// Over a connection of its own: which events of a window a client is sent is one choice for
    /// the whole connection, and others choose for the same windows.
    explicit X11HotkeyService(std::unique_ptr<xcb::Connection> connection);
    Q_DISABLE_COPY_MOVE(X11HotkeyService)
    ~X11HotkeyService() override;

    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    /// How a press came: sent to us, or beside whoever it was sent to.
    enum class Heard { AsOurs, BesideAnother };
    struct Registration : HotKeyRegistration {
        std::optional<KeyChord> grabbed; ///< or asked for
        int attempt = 0; ///< to grab it, counted so that a late answer is known for one
    };

    QCoro::Task<> learnModifierKeys();
    QCoro::Task<> ask(HotKeyRef ref);
    void askForAll();
    void giveUp(Registration &registration);
    void giveUpAll();
    std::optional<KeyChord> chordOf(const HotKey &hotKey) const;
    bool isTaken(KeyChord chord) const;
    void conclude(HotKeyRef ref, int attempt, Grab grab);
    void receive(const void *event);
    void press(KeyChord chord, std::uint32_t time, Heard heard);
    void updateListening();

    std::unique_ptr<xcb::Connection> m_connection;
    HotKeyBook<Registration> m_registrations;
    PressedHandler m_onPressed;
    ModifierKeys m_modifierKeys;
    bool m_knowsModifierKeys = false; // and asks for no key before
    bool m_isSuspended = false;
    KeyPresses m_presses;
    RawKeys m_rawKeys;
    KeyboardHolder m_keyboardHolder;
};

} // namespace lumacap::x11
