#include "platform/portal/shortcuts/PortalHotkeyService.h"

#include "platform/Spawn.h"
#include "platform/portal/shortcuts/ShortcutTrigger.h"

#include <QPointer>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

QString idOf(const HotKey &hotKey)
{
    return u"shortcut-%1"_s.arg(hotKey.id);
}

} // namespace

PortalHotkeyService::PortalHotkeyService(QDBusConnection connection, QString applicationId,
                                         ShortcutTexts texts)
    : m_portal(std::move(connection), std::move(applicationId))
    , m_texts(std::move(texts))
    , m_portals(portalName, m_portal.connection(), QDBusServiceWatcher::WatchForRegistration)
{
    // The next portal knows nothing of what the last one gave out.
    connect(&m_portals, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        if (m_session == nullptr && m_attempt == nullptr)
            bindSoon();
    });
}

PortalHotkeyService::~PortalHotkeyService()
{
    giveUp(); // what waits for the session must find that it has no use any more
}

QCoro::Task<bool> PortalHotkeyService::isOffered()
{
    const auto version = co_await m_portal.versionOf(shortcutsInterface);
    co_return version.has_value();
}

void PortalHotkeyService::setPressedHandler(PressedHandler handler)
{
    m_onPressed = std::move(handler);
}

HotKeyRef PortalHotkeyService::registerHotKey(const HotKey &hotKey, Answer answer)
{
    const HotKeyRef ref = m_registrations.add(hotKey, std::move(answer));
    bindSoon();
    return ref;
}

void PortalHotkeyService::unregisterHotKey(HotKeyRef ref)
{
    if (m_registrations.find(ref) == nullptr)
        return;
    m_registrations.erase(ref);
    bindSoon();
}

void PortalHotkeyService::suspend()
{
    m_isSuspended = true;
    giveUp(); // or its keys would not go to whoever has the keyboard
}

void PortalHotkeyService::resume()
{
    if (std::exchange(m_isSuspended, false))
        bindSoon();
}

void PortalHotkeyService::giveUp()
{
    m_attempt.reset();
    m_session.reset();
}

/// On the next turn of the loop, for all that is changed in this one: the desktop may ask the
/// person each time.
void PortalHotkeyService::bindSoon()
{
    giveUp();
    if (std::exchange(m_isBindingSoon, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isBindingSoon = false;
            bindAll();
        },
        Qt::QueuedConnection);
}

void PortalHotkeyService::bindAll()
{
    if (m_isSuspended || m_registrations.isEmpty())
        return;
    m_attempt = std::make_unique<QObject>();
    spawn(bind(m_attempt.get()));
}

QCoro::Task<> PortalHotkeyService::bind(QPointer<QObject> attempt)
{
    const auto portal = co_await m_portal.reach();
    if (!attempt)
        co_return; // what was to be bound has changed, or nobody wants it any more
    if (!portal) {
        conclude({});
        co_return;
    }
    m_session = std::make_unique<ShortcutSession>(*portal);
    followSession();
    const auto bound = co_await m_session->bind(wanted());
    if (!attempt)
        co_return;
    if (!bound)
        m_session.reset();
    conclude(bound.value_or(QStringList()));
}

void PortalHotkeyService::followSession()
{
    connect(m_session.get(), &ShortcutSession::activated, this, &PortalHotkeyService::press);
    const QPointer session = m_session.get();
    // The desktop or the person took them back: asking again at once would be to pester.
    const auto forget = [this, session] {
        if (session && m_session.get() == session)
            m_session.reset();
    };
    connect(session, &ShortcutSession::closed, this, forget, Qt::QueuedConnection);
    // Where it was bound, the portal is started again; one that dies of the binding is not.
    const auto bindAnew = [this, session] {
        if (session && m_session.get() == session && m_attempt == nullptr)
            bindSoon();
    };
    connect(session, &ShortcutSession::lost, this, bindAnew, Qt::QueuedConnection);
}

/// One of each id, and of the same keys the earliest: others are not asked for.
QList<BoundShortcut> PortalHotkeyService::wanted() const
{
    QList<BoundShortcut> shortcuts;
    QStringList triggers;
    for (const auto &[ref, registration] : m_registrations) {
        const QString id = idOf(registration.hotKey);
        const auto trigger = triggerOf(registration.hotKey);
        const auto isThat = [&id](const BoundShortcut &other) { return other.id == id; };
        if (!trigger || triggers.contains(*trigger) || std::ranges::any_of(shortcuts, isThat))
            continue;
        triggers.append(*trigger);
        const auto text = m_texts.find(registration.hotKey.id);
        const QString description = text == m_texts.end() ? id : text->second;
        shortcuts.append(
            {id, {{u"description"_s, description}, {u"preferred_trigger"_s, *trigger}}});
    }
    return shortcuts;
}

/// A shortcut without keys counts as live: some desktops leave giving it keys to their settings.
void PortalHotkeyService::conclude(const QStringList &bound)
{
    m_attempt.reset();
    QStringList free = bound;
    std::vector<std::pair<HotKeyRef, HotKeyState>> answers;
    for (const auto &[ref, registration] : m_registrations) {
        const bool isLive =
            triggerOf(registration.hotKey) && free.removeAll(idOf(registration.hotKey)) != 0;
        answers.emplace_back(ref, isLive ? HotKeyState::Live : HotKeyState::NotLive);
    }
    const QPointer self(this); // whoever is told may end the service
    for (const auto &[ref, state] : answers) {
        m_registrations.answer(ref, state);
        if (!self)
            return;
    }
    if (m_registrations.isEmpty())
        giveUp();
}

void PortalHotkeyService::press(const QString &id)
{
    const auto pressed = std::ranges::find_if(m_registrations, [&id](const auto &entry) {
        return idOf(entry.second.hotKey) == id && !entry.second.answer;
    });
    if (pressed != m_registrations.end() && !m_isSuspended && m_onPressed)
        m_onPressed(pressed->second.hotKey.id);
}

} // namespace lumacap::portal
