#pragma once

#include "platform/HotkeyService.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace lumacap {

/// Keeps what is registered, and answers when the test says so.
class FakeHotkeyService final : public HotkeyService {
public:
    struct Registration {
        HotKeyRef ref{};
        HotKey hotKey;
        Answer answer; ///< empty once called
    };

    void setPressedHandler(PressedHandler handler) override { onPressed = std::move(handler); }
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override
    {
        registrations.push_back({HotKeyRef{++m_lastRef}, hotKey, std::move(answer)});
        return registrations.back().ref;
    }
    void unregisterHotKey(HotKeyRef ref) override
    {
        std::erase_if(registrations,
                      [ref](const Registration &registration) { return registration.ref == ref; });
    }
    void suspend() override { isSuspended = true; }
    void resume() override { isSuspended = false; }

    /// Answers everything that was asked so far: `refused` is what another program has.
    void answerAll(const std::optional<HotKey> &refused = std::nullopt)
    {
        const auto asked = registrations;
        for (const Registration &registration : asked) {
            if (registration.answer)
                answer(registration, registration.hotKey == refused);
        }
    }
    std::vector<HotKey> registered() const
    {
        std::vector<HotKey> keys;
        for (const Registration &registration : registrations)
            keys.push_back(registration.hotKey);
        return keys;
    }

    PressedHandler onPressed;
    std::vector<Registration> registrations;
    bool isSuspended = false;

private:
    void answer(const Registration &registration, bool isRefused)
    {
        if (isRefused)
            unregisterHotKey(registration.ref);
        for (Registration &kept : registrations) {
            if (kept.ref == registration.ref)
                kept.answer = {};
        }
        registration.answer(isRefused ? HotKeyState::NotLive : HotKeyState::Live);
    }

    std::uint64_t m_lastRef = 0;
};

} // namespace lumacap
