#include "preferences/HotkeyManager.h"

#include "preferences/storage/KeyCombo.h"

#include <QCoreApplication>

#include <tuple>
#include <utility>

namespace lumacap {

namespace {

std::shared_ptr<HotkeyManager> &currentManager()
{
    static std::shared_ptr<HotkeyManager> manager;
    return manager;
}

} // namespace

std::shared_ptr<HotkeyManager> HotkeyManager::make(HotkeyService &service)
{
    const std::shared_ptr<HotkeyManager> manager(new HotkeyManager(service));
    manager->m_self = manager;
    currentManager() = manager;
    service.setPressedHandler([](std::uint32_t id) { std::ignore = hotKeyHandler(id); });
    return manager;
}

std::shared_ptr<HotkeyManager> HotkeyManager::current()
{
    return currentManager();
}

HotkeyManager::HotkeyManager(HotkeyService &service)
    : m_service(service)
{
}

HotkeyManager::~HotkeyManager() = default;

void HotkeyManager::registerHotKey(std::uint32_t id, const KeyCombo &keyCombo, Handler handler)
{
    giveUp(id);
    m_handlers.insert_or_assign(id, std::move(handler));
    const HotKey hotKey{id, keyCombo.keyCode, keyCombo.modifiers};
    m_unanswered[id] = m_service.registerHotKey(hotKey, [self = m_self, id](HotKeyState state) {
        const auto manager = self.lock();
        if (!manager)
            return;
        const auto answered = manager->m_unanswered.extract(id);
        if (state == HotKeyState::Live)
            manager->m_hotKeyRefs[id] = answered.mapped();
    });
}

void HotkeyManager::giveUp(std::uint32_t id)
{
    for (auto *const registrations : {&m_hotKeyRefs, &m_unanswered}) {
        if (const auto registration = registrations->extract(id))
            m_service.unregisterHotKey(registration.mapped());
    }
    m_handlers.erase(id);
}

void HotkeyManager::unregisterAll()
{
    for (const auto *const registrations : {&m_hotKeyRefs, &m_unanswered}) {
        while (!registrations->empty())
            giveUp(registrations->begin()->first);
    }
}

void HotkeyManager::handleHotKeyEvent(std::uint32_t id)
{
    const auto found = m_handlers.find(id);
    if (found == m_handlers.end())
        return;
    const Handler handler = found->second; // it may register another in its own place
    handler();
}

HotKeyEventStatus HotkeyManager::hotKeyHandler(std::optional<std::uint32_t> event)
{
    if (!event)
        return HotKeyEventStatus::NotHandled;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [id = *event] {
            if (const auto manager = current())
                manager->handleHotKeyEvent(id);
        },
        Qt::QueuedConnection);
    return HotKeyEventStatus::Handled;
}

} // namespace lumacap
