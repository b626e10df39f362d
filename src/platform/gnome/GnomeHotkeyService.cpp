#include "platform/gnome/GnomeHotkeyService.h"

#include "platform/VirtualKeys.h"

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

namespace {

std::optional<KeyChord> chordOf(const HotKey &hotKey)
{
    const auto key = evdevCode(hotKey.keyCode);
    return key ? std::optional(KeyChord{*key, hotKey.modifiers}) : std::nullopt;
}

/// One word of a shell's, whatever it holds.
QString quoted(QString word)
{
    return u'\'' + word.replace(u'\'', u"'\\''"_s) + u'\'';
}

} // namespace

GnomeHotkeyService::GnomeHotkeyService(std::unique_ptr<Keybindings> keybindings, QString program,
                                       std::vector<HotkeyCommand> commands)
    : m_keybindings(std::move(keybindings))
    , m_program(std::move(program))
    , m_commands(std::move(commands))
{
    m_keybindings->removeAll();
}

GnomeHotkeyService::~GnomeHotkeyService()
{
    m_keybindings->removeAll();
    m_keybindings->store();
}

void GnomeHotkeyService::setPressedHandler(PressedHandler /*handler*/) { }

HotKeyRef GnomeHotkeyService::registerHotKey(const HotKey &hotKey, Answer answer)
{
    const HotKeyRef ref = m_registrations.add(hotKey, std::move(answer));
    if (!m_isSuspended)
        decide(ref);
    return ref;
}

void GnomeHotkeyService::unregisterHotKey(HotKeyRef ref)
{
    const Registration *const registered = m_registrations.find(ref);
    if (registered != nullptr && registered->command != nullptr)
        m_keybindings->remove(registered->command->argument);
    m_registrations.erase(ref);
}

void GnomeHotkeyService::suspend()
{
    m_isSuspended = true;
    m_keybindings->removeAll();
}

void GnomeHotkeyService::resume()
{
    if (!std::exchange(m_isSuspended, false))
        return;
    for (const auto &[ref, registration] : m_registrations) {
        if (registration.command != nullptr)
            add(registration);
    }
    for (const auto &[ref, registration] : m_registrations) {
        if (registration.command == nullptr)
            decide(ref);
    }
}

void GnomeHotkeyService::decide(HotKeyRef ref)
{
    Registration &registration = *m_registrations.find(ref);
    const auto chord = chordOf(registration.hotKey);
    const bool isFree = chord && !isOurs(*chord) && !m_keybindings->isTaken(*chord);
    if (isFree)
        registration.command = commandFor(registration.hotKey);
    if (registration.command != nullptr)
        add(registration);
    const auto state = registration.command == nullptr ? HotKeyState::NotLive : HotKeyState::Live;
    QMetaObject::invokeMethod(
        this, [this, ref, state] { m_registrations.answer(ref, state); }, Qt::QueuedConnection);
}

const HotkeyCommand *GnomeHotkeyService::commandFor(const HotKey &hotKey) const
{
    const auto found = std::ranges::find(m_commands, hotKey.id, &HotkeyCommand::id);
    if (found == m_commands.end())
        return nullptr;
    const bool isUsed = std::ranges::any_of(
        m_registrations, [&](const auto &entry) { return entry.second.command == &*found; });
    return isUsed ? nullptr : &*found;
}

bool GnomeHotkeyService::isOurs(const KeyChord &chord) const
{
    return std::ranges::any_of(m_registrations, [&](const auto &entry) {
        return entry.second.command != nullptr && chordOf(entry.second.hotKey) == chord;
    });
}

void GnomeHotkeyService::add(const Registration &registration)
{
    const auto chord = chordOf(registration.hotKey);
    if (!chord)
        return;
    const HotkeyCommand &command = *registration.command;
    m_keybindings->add(command.argument,
                       {command.title, quoted(m_program) + u' ' + command.argument, *chord});
}

} // namespace lumacap::gnome
