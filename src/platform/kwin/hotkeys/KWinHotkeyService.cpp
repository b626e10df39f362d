#include "platform/kwin/hotkeys/KWinHotkeyService.h"

#include "platform/Spawn.h"
#include "platform/VirtualKeys.h"

#include <QPointer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

KWinHotkeyService::KWinHotkeyService(wayland::Connection &connection, QDBusConnection bus,
                                     Actions actions)
    : m_actions(std::move(actions))
    , m_keyboard(connection, bus)
    , m_shortcuts(std::move(bus))
{
    connect(&m_keyboard, &Keyboard::changed, this, &KWinHotkeyService::askForChanged);
    connect(&m_shortcuts, &GlobalShortcuts::appeared, this, &KWinHotkeyService::askForAll);
    connect(&m_shortcuts, &GlobalShortcuts::pressed, this, &KWinHotkeyService::press);
}

KWinHotkeyService::~KWinHotkeyService()
{
    for (auto &[ref, registration] : m_registrations)
        giveUp(registration); // or the keys would lead to nobody
}

void KWinHotkeyService::setPressedHandler(PressedHandler handler)
{
    m_onPressed = std::move(handler);
}

HotKeyRef KWinHotkeyService::registerHotKey(const HotKey &hotKey, Answer answer)
{
    const HotKeyRef ref = m_registrations.add(hotKey, std::move(answer));
    if (isReady())
        spawn(ask(ref));
    return ref;
}

void KWinHotkeyService::unregisterHotKey(HotKeyRef ref)
{
    Registration *const registered = m_registrations.find(ref);
    if (registered == nullptr)
        return;
    giveUp(*registered);
    m_registrations.erase(ref);
}

void KWinHotkeyService::suspend()
{
    m_isSuspended = true;
    for (auto &[ref, registration] : m_registrations) {
        ++registration.attempt;
        if (!registration.keys.isEmpty())
            m_shortcuts.rest(actionOf(registration.hotKey.id));
    }
}

void KWinHotkeyService::resume()
{
    if (std::exchange(m_isSuspended, false))
        askForAll();
}

bool KWinHotkeyService::isReady() const
{
    return m_keyboard.isKnown() && m_shortcuts.isThere() && !m_isSuspended;
}

void KWinHotkeyService::askForAll()
{
    if (!isReady())
        return;
    for (const auto &[ref, registration] : m_registrations)
        spawn(ask(ref));
}

void KWinHotkeyService::askForChanged()
{
    if (!isReady())
        return;
    for (const auto &[ref, registration] : m_registrations) {
        const QList<int> keys = sequencesOf(registration.hotKey).all();
        if (keys != registration.keys || keys.isEmpty())
            spawn(ask(ref));
    }
}

QCoro::Task<> KWinHotkeyService::ask(HotKeyRef ref)
{
    const QPointer self{this};
    Registration &asked = *m_registrations.find(ref);
    const int attempt = ++asked.attempt;
    const KeySequences sequences = sequencesOf(asked.hotKey);
    HotKeyState state = HotKeyState::NotLive;
    if (!sequences.required.isEmpty() && !isTaken(ref, sequences.all())) {
        asked.keys = sequences.all();
        const ShortcutAction action = actionOf(asked.hotKey.id);
        const QList<int> granted = co_await m_shortcuts.setKeys(action, asked.keys);
        if (!self)
            co_return;
        // Those that only count while a lock is on are welcome, and not needed.
        const bool isGranted = granted.size() >= sequences.required.size()
            && !granted.first(sequences.required.size()).contains(0);
        state = isGranted ? HotKeyState::Live : HotKeyState::NotLive;
    }
    QMetaObject::invokeMethod(
        this, [this, ref, attempt, state] { conclude(ref, attempt, state); }, Qt::QueuedConnection);
}

void KWinHotkeyService::conclude(HotKeyRef ref, int attempt, HotKeyState state)
{
    Registration *const asked = m_registrations.find(ref);
    if (asked == nullptr || asked->attempt != attempt)
        return; // given up meanwhile
    asked->isLive = state == HotKeyState::Live;
    if (state == HotKeyState::NotLive)
        giveUp(*asked);
    m_registrations.answer(ref, state);
}

void KWinHotkeyService::giveUp(Registration &registration)
{
    ++registration.attempt;
    registration.isLive = false;
    if (!std::exchange(registration.keys, {}).isEmpty())
        m_shortcuts.forget(actionOf(registration.hotKey.id));
}

KeySequences KWinHotkeyService::sequencesOf(const HotKey &hotKey) const
{
    const auto evdev = evdevCode(hotKey.keyCode);
    return evdev ? m_keyboard.sequences(*evdev, hotKey.modifiers) : KeySequences();
}

/// By a registration that came earlier.
bool KWinHotkeyService::isTaken(HotKeyRef ref, const QList<int> &keys) const
{
    return std::ranges::any_of(m_registrations, [&](const auto &entry) {
        return entry.first < ref
            && std::ranges::any_of(
                   keys, [&entry](int key) { return entry.second.keys.contains(key); });
    });
}

ShortcutAction KWinHotkeyService::actionOf(std::uint32_t id) const
{
    const auto named = m_actions.find(id);
    return named != m_actions.end()
        ? named->second
        : ShortcutAction{u"shortcut-%1"_s.arg(id), u"Shortcut %1"_s.arg(id)};
}

void KWinHotkeyService::press(const QString &action)
{
    const auto pressed = std::ranges::find_if(m_registrations, [&](const auto &entry) {
        return entry.second.isLive && actionOf(entry.second.hotKey.id).name == action;
    });
    if (pressed != m_registrations.end() && m_onPressed && !m_isSuspended)
        m_onPressed(pressed->second.hotKey.id);
}

} // namespace lumacap::kwin
