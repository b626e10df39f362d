#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace lumacap::wayland {

/// The serials of what a person does in windows of ours. A request that only the program with the
/// focus may make names one of them as its cause.
class FocusSerials {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// A window of ours got the keyboard, and lost it.
    void keyboardEntered(std::uint32_t serial);
    void keyboardLeft(Time now);
    void keyPressed(std::uint32_t serial);
    /// A window of ours was clicked on, and the pointer left it. To be under the pointer is no
    /// focus.
    void buttonPressed(std::uint32_t serial);
    void pointerLeft(Time now);

    /// The latest; none when no window of ours has the focus at `now`, nor had it a moment before:
    /// what the person did is told before the toolkit acts on it, and so is the loss of the focus.
    std::optional<std::uint32_t> latest(Time now) const;

private:
    /// Of the keyboard or the pointer.
    struct Focus {
        std::optional<std::uint32_t> serial;
        std::optional<Time> leftAt;
    };

    static std::optional<std::uint32_t> counting(const Focus &focus, Time now);

    Focus m_keyboard;
    Focus m_pointer;
};

} // namespace lumacap::wayland
