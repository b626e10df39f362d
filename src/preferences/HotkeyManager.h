#pragma once

#include "platform/HotkeyService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace lumacap {

struct KeyCombo;

/// What `HotkeyManager::hotKeyHandler` answers, as Carbon numbers it.
enum class HotKeyEventStatus : std::int32_t { Handled = 0, NotHandled = -9874 };

/// The program's shortcuts: registers each under a number, and runs what is stored for that number
/// when it is pressed. Main thread only.
class HotkeyManager {
public:
    using Handler = std::function<void()>;

    /// Makes a manager without shortcuts the process's current one, in place of the one before:
    /// that one's shortcuts stay live, and its handlers are reached no more. Shared between the
    /// process and the caller, each of which needs it to the end. `service` outlives the manager.
    static std::shared_ptr<HotkeyManager> make(HotkeyService &service);
    /// The one made last; null before any was.
    static std::shared_ptr<HotkeyManager> current();

    ~HotkeyManager();
    Q_DISABLE_COPY_MOVE(HotkeyManager)

    /// Replaces whatever is registered under `id`. A shortcut that the desktop refuses keeps its
    /// handler and never fires; nobody is told.
    void registerHotKey(std::uint32_t id, const KeyCombo &keyCombo, Handler handler);
    /// Gives up all shortcuts that are live or not yet answered, with their handlers. Handlers of
    /// refused ones stay.
    void unregisterAll();

    /// Runs the handler of `id`, the number of a pressed shortcut; nothing when there is none.
    void handleHotKeyEvent(std::uint32_t id);
    /// What the desktop is given to be called with the number of each pressed shortcut. Leads it to
    /// the current manager on the next turn of the main loop, and never before the return.
    static HotKeyEventStatus hotKeyHandler(std::optional<std::uint32_t> event);

    /// The live shortcuts, by number.
    const std::map<std::uint32_t, HotKeyRef> &hotKeyRefs() const { return m_hotKeyRefs; }
    const std::map<std::uint32_t, Handler> &handlers() const { return m_handlers; }

private:
    explicit HotkeyManager(HotkeyService &service);
    void giveUp(std::uint32_t id);

    HotkeyService &m_service;
    std::map<std::uint32_t, HotKeyRef> m_hotKeyRefs;
    std::map<std::uint32_t, HotKeyRef> m_unanswered;
    std::map<std::uint32_t, Handler> m_handlers;
    std::weak_ptr<HotkeyManager> m_self;
};

} // namespace lumacap
