#include "app/LateHotkeyService.h"

#include "platform/Spawn.h"

#include <QPointer>

#include <utility>

namespace lumacap {

LateHotkeyService::LateHotkeyService(QCoro::Task<std::unique_ptr<HotkeyService>> choice)
{
    spawn(await(std::move(choice)));
}

QCoro::Task<> LateHotkeyService::await(QCoro::Task<std::unique_ptr<HotkeyService>> choice)
{
    const QPointer self{this};
    auto chosen = co_await std::move(choice);
    if (self)
        adopt(std::move(chosen));
}

void LateHotkeyService::adopt(std::unique_ptr<HotkeyService> chosen)
{
    m_chosen = std::move(chosen);
    m_chosen->setPressedHandler(m_onPressed);
    if (m_isSuspended)
        m_chosen->suspend();
    for (const auto &[ref, registration] : m_registrations)
        pass(ref);
}

/// The service answers later, when its own number of the registration is known.
void LateHotkeyService::pass(HotKeyRef ref)
{
    Registration &registration = *m_registrations.find(ref);
    registration.chosenRef =
        m_chosen->registerHotKey(registration.hotKey, [this, ref](HotKeyState state) {
            m_registrations.answer(ref, state);
        });
}

void LateHotkeyService::setPressedHandler(PressedHandler handler)
{
    m_onPressed = std::move(handler);
    if (m_chosen)
        m_chosen->setPressedHandler(m_onPressed);
}

HotKeyRef LateHotkeyService::registerHotKey(const HotKey &hotKey, Answer answer)
{
    const HotKeyRef ref = m_registrations.add(hotKey, std::move(answer));
    if (m_chosen)
        pass(ref);
    return ref;
}

void LateHotkeyService::unregisterHotKey(HotKeyRef ref)
{
    const Registration *const registered = m_registrations.find(ref);
    if (registered == nullptr)
        return;
    const std::optional<HotKeyRef> chosenRef = registered->chosenRef;
    m_registrations.erase(ref);
    if (chosenRef)
        m_chosen->unregisterHotKey(*chosenRef);
}

void LateHotkeyService::suspend()
{
    m_isSuspended = true;
    if (m_chosen)
        m_chosen->suspend();
}

void LateHotkeyService::resume()
{
    m_isSuspended = false;
    if (m_chosen)
        m_chosen->resume();
}

} // namespace lumacap
