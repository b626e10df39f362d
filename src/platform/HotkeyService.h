#pragma once

#include <QtGlobal>

#include <cstdint>
#include <functional>

namespace lumacap {

/// Names one registration of a shortcut, and never another.
enum class HotKeyRef : std::uint64_t { };

/// A shortcut to be registered.
struct HotKey {
    /// What presses of it are told by; the caller's own.
    std::uint32_t id = 0;
    /// macOS virtual key code: a physical key, whatever the layout.
    std::uint32_t keyCode = 0;
    /// A mask of the bits in `carbon`, held with the key and no others; locks don't matter.
    std::uint32_t modifiers = 0;

    friend bool operator==(const HotKey &, const HotKey &) = default;
};

/// Whether a shortcut now leads to us. It does not where somebody else has it, where the keyboard
/// has no such key, and on a desktop that gives out none.
enum class HotKeyState { Live, NotLive };

/// Shortcuts that work while any other program is in front. All is told on the main thread.
class HotkeyService {
public:
    using PressedHandler = std::function<void(std::uint32_t id)>;
    using Answer = std::function<void(HotKeyState)>;

    HotkeyService() = default;
    Q_DISABLE_COPY_MOVE(HotkeyService)
    virtual ~HotkeyService() = default;

    /// Who is told the id of each press of a live shortcut, once a press, within the desktop's own
    /// event; takes the place of an earlier one.
    virtual void setPressedHandler(PressedHandler handler) = 0;

    /// Asks the desktop for a shortcut. `answer` is called once, after the return, and never after
    /// the shortcut was unregistered. One that is not live is forgotten as soon as it is answered.
    /// Of two with the same keys the earlier is live.
    [[nodiscard]] virtual HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) = 0;
    /// Gives the shortcut up, and its answer if that is still to come. Nothing for one that is not
    /// registered.
    virtual void unregisterHotKey(HotKeyRef ref) = 0;

    /// From now on no shortcut fires and its keys go to whoever has the keyboard, until `resume`.
    /// What is registered stays so; what is registered meanwhile is answered after `resume`.
    virtual void suspend() = 0;
    virtual void resume() = 0;
};

} // namespace lumacap
