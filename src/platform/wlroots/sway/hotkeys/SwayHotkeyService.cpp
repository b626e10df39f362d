#include "platform/wlroots/sway/hotkeys/SwayHotkeyService.h"

#include "platform/CarbonModifiers.h"
#include "platform/Spawn.h"
#include "platform/VirtualKeys.h"
#include "platform/wlroots/sway/hotkeys/Keymap.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <array>
#include <chrono>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::sway {

namespace {

/// At the start of a session the compositor has much to do.
constexpr auto patience = 10s;
constexpr auto patienceAtTheEnd = 500ms;

const QString usualMode = u"default"_s;

struct ModifierRow {
    std::uint32_t carbon;
    std::uint32_t mask;
    QLatin1StringView name;
};

constexpr std::array modifierRows{
    ModifierRow{carbon::controlKey, modifier::control, "Ctrl"_L1},
    ModifierRow{carbon::shiftKey, modifier::shift, "Shift"_L1},
    ModifierRow{carbon::optionKey, modifier::alt, "Mod1"_L1},
    ModifierRow{carbon::cmdKey, modifier::logo, "Mod4"_L1},
};

// By the key and not by its symbol, once however long it is held, and of the kind that takes no
// other's place.
const QString flags = u"--no-repeat --inhibited"_s;

QString quoted(QString text)
{
    text.replace(u"\\"_s, u"\\\\"_s).replace(u"\""_s, u"\\\""_s);
    return u'"' + text + u'"';
}

} // namespace

SwayHotkeyService::SwayHotkeyService(std::unique_ptr<wayland::SeatKeyboard> keyboard,
                                     const QString &path)
    : m_keyboard(std::move(keyboard))
    , m_mode(usualMode)
    , m_ipc(path, patience)
{
    connect(&m_ipc, &Ipc::happened, this, &SwayHotkeyService::handle);
    m_ipc.subscribe({u"binding"_s, u"mode"_s, u"workspace"_s});
    spawn(learnConfiguration());
}

SwayHotkeyService::~SwayHotkeyService()
{
    for (auto &[ref, registration] : m_registrations)
        giveUp(registration);
    m_registrations.clear();
    ++m_readings;
    m_ipc.finish(patienceAtTheEnd);
}

void SwayHotkeyService::setPressedHandler(PressedHandler handler)
{
    m_onPressed = std::move(handler);
}

HotKeyRef SwayHotkeyService::registerHotKey(const HotKey &hotKey, Answer answer)
{
    const HotKeyRef ref = m_registrations.add(hotKey, std::move(answer));
    if (!m_isReading && !m_isSuspended)
        ask(ref);
    return ref;
}

void SwayHotkeyService::unregisterHotKey(HotKeyRef ref)
{
    Registration *const registered = m_registrations.find(ref);
    if (registered == nullptr)
        return;
    giveUp(*registered);
    m_registrations.erase(ref);
}

void SwayHotkeyService::suspend()
{
    m_isSuspended = true;
    for (auto &[ref, registration] : m_registrations)
        giveUp(registration);
}

void SwayHotkeyService::resume()
{
    if (std::exchange(m_isSuspended, false))
        askForAll();
}

/// Without the configuration nothing is bound: it might take a key of the person's.
QCoro::Task<> SwayHotkeyService::learnConfiguration()
{
    const QPointer self(this);
    const int reading = ++m_readings;
    m_isReading = true;
    // Asked together, so that no change of the configuration falls between the answers.
    AwaitedReply askedMode = m_ipc.ask(Request::GetBindingState);
    AwaitedReply askedVersion = m_ipc.ask(Request::GetVersion);
    AwaitedReply askedText = m_ipc.ask(Request::GetConfig);
    const Ipc::Reply mode = co_await askedMode;
    const Ipc::Reply version = co_await askedVersion;
    const Ipc::Reply text = co_await askedText;
    if (!self || reading != m_readings)
        co_return;
    m_isReading = false;
    if (mode)
        m_mode = mode->object()[u"name"].toString(usualMode);
    m_configured.reset();
    if (text && version)
        m_configured = configuredKeys(text->object()[u"config"].toString(),
                                      version->object()[u"loaded_config_file_name"].toString());
    askForAll();
}

void SwayHotkeyService::askForAll()
{
    if (m_isReading || m_isSuspended)
        return;
    for (const auto &[ref, registration] : m_registrations)
        ask(ref);
}

std::optional<SwayHotkeyService::Chord> SwayHotkeyService::chordOf(const HotKey &hotKey)
{
    const auto evdev = evdevCode(hotKey.keyCode);
    if (!evdev)
        return std::nullopt;
    Chord chord{*evdev + scanCodeOffset, 0};
    for (const ModifierRow &row : modifierRows) {
        if ((hotKey.modifiers & row.carbon) != 0)
            chord.modifiers |= row.mask;
    }
    return chord;
}

QString SwayHotkeyService::keysOf(Chord chord)
{
    QStringList parts;
    for (const ModifierRow &row : modifierRows) {
        if ((chord.modifiers & row.mask) != 0)
            parts.append(row.name);
    }
    parts.append(QString::number(chord.code));
    return parts.join(u'+');
}

/// By the process, too: one that was killed may have left others behind.
QString SwayHotkeyService::commandOf(HotKeyRef ref)
{
    return u"nop lumacap %1 %2"_s.arg(QCoreApplication::applicationPid())
        .arg(std::to_underlying(ref));
}

void SwayHotkeyService::ask(HotKeyRef ref)
{
    Registration &asked = *m_registrations.find(ref);
    ++asked.attempt;
    const auto chord = chordOf(asked.hotKey);
    if (chord && !isTaken(*chord) && !isConfigured(*chord))
        bind(ref, *chord);
    else
        concludeLater(ref, asked.attempt, HotKeyState::NotLive);
}

void SwayHotkeyService::bind(HotKeyRef ref, Chord chord)
{
    Registration &asked = *m_registrations.find(ref);
    asked.bound = chord;
    const QString command = u"bindcode %1 %2 %3"_s.arg(flags, keysOf(chord), commandOf(ref));
    m_ipc.ask(Request::RunCommand, inUsualMode(command).toUtf8(),
              [self = QPointer(this), ref, attempt = asked.attempt](const Ipc::Reply &reply) {
                  if (self)
                      self->concludeLater(ref, attempt,
                                          isSuccess(reply) ? HotKeyState::Live
                                                           : HotKeyState::NotLive);
              });
}

/// The compositor binds in the mode it is in, and only there; ours belong where the person's usual
/// shortcuts are.
QString SwayHotkeyService::inUsualMode(const QString &command) const
{
    if (m_mode == usualMode)
        return command;
    return u"mode %1; %2; mode %3"_s.arg(usualMode, command, quoted(m_mode));
}

void SwayHotkeyService::giveUp(Registration &registration)
{
    ++registration.attempt;
    const auto chord = std::exchange(registration.bound, std::nullopt);
    if (!chord)
        return;
    const QString command = u"unbindcode %1 %2"_s.arg(flags, keysOf(*chord));
    m_ipc.ask(Request::RunCommand, inUsualMode(command).toUtf8(), [](const Ipc::Reply &) { });
}

void SwayHotkeyService::concludeLater(HotKeyRef ref, int attempt, HotKeyState state)
{
    QMetaObject::invokeMethod(
        this, [this, ref, attempt, state] { conclude(ref, attempt, state); }, Qt::QueuedConnection);
}

void SwayHotkeyService::conclude(HotKeyRef ref, int attempt, HotKeyState state)
{
    Registration *const asked = m_registrations.find(ref);
    if (asked == nullptr || asked->attempt != attempt)
        return; // given up meanwhile
    if (state == HotKeyState::NotLive)
        giveUp(*asked);
    m_registrations.answer(ref, state);
}

bool SwayHotkeyService::isConfigured(Chord chord) const
{
    if (!m_configured)
        return true; // for all we know
    const Keymap keymap(m_keyboard ? m_keyboard->keymap() : QByteArray());
    return std::ranges::any_of(*m_configured, [&](const ConfiguredKey &configured) {
        return keymap.isMeant(configured, chord.code, chord.modifiers);
    });
}

bool SwayHotkeyService::isTaken(Chord chord) const
{
    return std::ranges::any_of(m_registrations,
                               [chord](const auto &entry) { return entry.second.bound == chord; });
}

void SwayHotkeyService::handle(Event event, const QJsonObject &facts)
{
    const QString change = facts[u"change"].toString();
    switch (event) {
    case Event::Binding:
        press(facts[u"binding"][u"command"].toString());
        break;
    case Event::Mode:
        m_mode = change;
        break;
    case Event::Workspace:
        if (change == u"reload"_s)
            startAnew();
        break;
    case Event::Window:
        break;
    }
}

/// A configuration read anew has forgotten all bindings but its own.
void SwayHotkeyService::startAnew()
{
    for (auto &[ref, registration] : m_registrations) {
        ++registration.attempt;
        registration.bound.reset();
    }
    spawn(learnConfiguration());
}

void SwayHotkeyService::press(const QString &command)
{
    const auto pressed = std::ranges::find_if(m_registrations, [&command](const auto &entry) {
        return entry.second.bound && commandOf(entry.first) == command;
    });
    if (pressed != m_registrations.end() && m_onPressed)
        m_onPressed(pressed->second.hotKey.id);
}

} // namespace lumacap::sway
