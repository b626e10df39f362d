#pragma once

#include "platform/HotkeyService.h"

#include <concepts>
#include <map>
#include <utility>

namespace lumacap {

/// One shortcut that a service was asked for. Services derive from it what they have of the
/// shortcut at their desktop.
struct HotKeyRegistration {
    HotKey hotKey;
    HotkeyService::Answer answer; ///< empty once called
};

/// All shortcuts that a service was asked for and that nobody has given up, the earliest first.
template <std::derived_from<HotKeyRegistration> Registration>
class HotKeyBook {
public:
    HotKeyRef add(const HotKey &hotKey, HotkeyService::Answer answer)
    {
        m_lastRef = HotKeyRef{std::to_underlying(m_lastRef) + 1};
        Registration &added = m_registrations[m_lastRef];
        added.hotKey = hotKey;
        added.answer = std::move(answer);
        return m_lastRef;
    }

    /// Null for one that is not registered. Valid until it is erased or answered.
    Registration *find(HotKeyRef ref)
    {
        const auto found = m_registrations.find(ref);
        return found == m_registrations.end() ? nullptr : &found->second;
    }

    void erase(HotKeyRef ref) { m_registrations.erase(ref); }
    void clear() { m_registrations.clear(); }
    bool isEmpty() const { return m_registrations.empty(); }

    /// Tells whoever registered, who is told once: one that is not live is erased with that, while
    /// one that was live, and is not after a change of the desktop, stays to be asked for again.
    /// The call may change the book and end its owner.
    void answer(HotKeyRef ref, HotKeyState state)
    {
        const auto found = m_registrations.find(ref);
        if (found == m_registrations.end() || !found->second.answer)
            return;
        const HotkeyService::Answer answer = std::exchange(found->second.answer, {});
        if (state == HotKeyState::NotLive)
            m_registrations.erase(found);
        answer(state);
    }

    auto begin() { return m_registrations.begin(); }
    auto end() { return m_registrations.end(); }
    auto begin() const { return m_registrations.begin(); }
    auto end() const { return m_registrations.end(); }

private:
    std::map<HotKeyRef, Registration> m_registrations;
    HotKeyRef m_lastRef{};
};

} // namespace lumacap
