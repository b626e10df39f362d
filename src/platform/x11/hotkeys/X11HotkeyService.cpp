#include "platform/x11/hotkeys/X11HotkeyService.h"

#include "platform/Spawn.h"
#include "platform/VirtualKeys.h"
#include "platform/x11/hotkeys/LockedScreen.h"
#include "platform/xcb/Connection.h"

#include <QPointer>

#include <algorithm>
#include <utility>

#include <xcb/xcb.h>

namespace lumacap::x11 {

X11HotkeyService::X11HotkeyService(std::unique_ptr<xcb::Connection> connection)
    : m_connection(std::move(connection))
    , m_rawKeys(*m_connection,
                [this](std::uint8_t key, const KeyCodes &held, std::uint32_t time) {
                    press({key, m_modifierKeys.heldAmong(held)}, time, Heard::BesideAnother);
                })
    , m_keyboardHolder(*m_connection, [this] { updateListening(); })
{
    connect(m_connection.get(), &xcb::Connection::received, this, &X11HotkeyService::receive);
    spawn(learnModifierKeys());
}

X11HotkeyService::~X11HotkeyService()
{
    m_connection->abandonReplies(); // or whoever waits for one would never end
}

void X11HotkeyService::setPressedHandler(PressedHandler handler)
{
    m_onPressed = std::move(handler);
}

HotKeyRef X11HotkeyService::registerHotKey(const HotKey &hotKey, Answer answer)
{
    const HotKeyRef ref = m_registrations.add(hotKey, std::move(answer));
    if (m_knowsModifierKeys && !m_isSuspended)
        spawn(ask(ref));
    updateListening();
    return ref;
}

void X11HotkeyService::unregisterHotKey(HotKeyRef ref)
{
    Registration *const registered = m_registrations.find(ref);
    if (registered == nullptr)
        return;
    giveUp(*registered);
    m_registrations.erase(ref);
    updateListening();
}

void X11HotkeyService::suspend()
{
    m_isSuspended = true;
    giveUpAll();
    updateListening();
}

void X11HotkeyService::resume()
{
    if (!std::exchange(m_isSuspended, false))
        return;
    askForAll();
    updateListening();
}

QCoro::Task<> X11HotkeyService::learnModifierKeys()
{
    const QPointer self{this};
    const auto keys = co_await ModifierKeys::ask(*m_connection);
    if (!self || !keys || (m_knowsModifierKeys && *keys == m_modifierKeys))
        co_return;
    giveUpAll();
    m_modifierKeys = *keys;
    m_knowsModifierKeys = true;
    askForAll();
}

void X11HotkeyService::askForAll()
{
    if (!m_knowsModifierKeys || m_isSuspended)
        return;
    for (const auto &[ref, registration] : m_registrations)
        spawn(ask(ref));
}

void X11HotkeyService::giveUp(Registration &registration)
{
    ++registration.attempt;
    if (const auto chord = std::exchange(registration.grabbed, std::nullopt))
        ungrab(*m_connection, *chord, m_modifierKeys.locks);
}

void X11HotkeyService::giveUpAll()
{
    for (auto &[ref, registration] : m_registrations)
        giveUp(registration);
}

QCoro::Task<> X11HotkeyService::ask(HotKeyRef ref)
{
    const QPointer self{this};
    Registration &asked = *m_registrations.find(ref);
    const int attempt = ++asked.attempt;
    const auto chord = chordOf(asked.hotKey);
    Grab answer = Grab::Refused;
    if (chord && !isTaken(*chord)) {
        asked.grabbed = chord;
        answer = co_await grab(*m_connection, *chord, m_modifierKeys.locks);
        if (!self)
            co_return;
    }
    QMetaObject::invokeMethod(
        this, [this, ref, attempt, answer] { conclude(ref, attempt, answer); },
        Qt::QueuedConnection);
}

void X11HotkeyService::conclude(HotKeyRef ref, int attempt, Grab grab)
{
    Registration *const asked = m_registrations.find(ref);
    if (asked == nullptr || asked->attempt != attempt)
        return; // given up meanwhile
    if (grab == Grab::Refused)
        giveUp(*asked);
    m_registrations.answer(ref, grab == Grab::Granted ? HotKeyState::Live : HotKeyState::NotLive);
}

std::optional<KeyChord> X11HotkeyService::chordOf(const HotKey &hotKey) const
{
    const xcb_setup_t &setup = *xcb_get_setup(m_connection->raw());
    const auto evdev = evdevCode(hotKey.keyCode);
    const auto modifiers = m_modifierKeys.maskOf(hotKey.modifiers);
    if (!evdev || !modifiers)
        return std::nullopt;
    const std::uint32_t key = *evdev + scanCodeOffset;
    if (key < setup.min_keycode || key > setup.max_keycode)
        return std::nullopt;
    return KeyChord{static_cast<std::uint8_t>(key), *modifiers};
}

bool X11HotkeyService::isTaken(KeyChord chord) const
{
    return std::ranges::any_of(
        m_registrations, [chord](const auto &entry) { return entry.second.grabbed == chord; });
}

void X11HotkeyService::receive(const void *event)
{
    constexpr unsigned sentByAClient = 0x80;
    const auto &key = *static_cast<const xcb_key_press_event_t *>(event);
    const unsigned type = key.response_type & ~sentByAClient;
    if (type == XCB_MAPPING_NOTIFY)
        spawn(learnModifierKeys());
    if (type == XCB_KEY_RELEASE)
        m_presses.release(key.detail, key.time);
    if (type == XCB_KEY_PRESS) {
        // A second layout may add to the state what no finger holds.
        const unsigned held = key.state & unsigned{m_modifierKeys.ofShortcuts()};
        press({key.detail, static_cast<std::uint8_t>(held)}, key.time, Heard::AsOurs);
    }
}

void X11HotkeyService::press(KeyChord chord, std::uint32_t time, Heard heard)
{
    if (!m_presses.isNew(chord.key, time) || m_isSuspended || !m_onPressed)
        return;
    const auto pressed = std::ranges::find_if(
        m_registrations, [chord](const auto &entry) { return entry.second.grabbed == chord; });
    if (pressed == m_registrations.end())
        return;
    // A screen locker holds the keyboard as a menu does, and is left alone with whoever is there.
    if (heard == Heard::BesideAnother && isScreenLocked(*m_connection))
        return;
    m_onPressed(pressed->second.hotKey.id);
}

void X11HotkeyService::updateListening()
{
    if (m_keyboardHolder.isAnother() && !m_isSuspended && !m_registrations.isEmpty())
        m_rawKeys.listen();
    else
        m_rawKeys.stop();
}

} // namespace lumacap::x11
