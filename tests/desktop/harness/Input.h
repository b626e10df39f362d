#pragma once

#include <QPoint>
#include <QtGlobal>

#include <cstdint>
#include <vector>

namespace lumacap::harness {

// Keys by the codes of linux/input-event-codes.h: where they are, whatever the layout.
namespace evdev {
inline constexpr std::uint32_t escape = 1;
inline constexpr std::uint32_t one = 2;
inline constexpr std::uint32_t two = 3;
inline constexpr std::uint32_t three = 4;
inline constexpr std::uint32_t tab = 15;
inline constexpr std::uint32_t enter = 28;
inline constexpr std::uint32_t control = 29;
inline constexpr std::uint32_t letterA = 30;
inline constexpr std::uint32_t letterF = 33;
inline constexpr std::uint32_t shift = 42;
inline constexpr std::uint32_t letterZ = 44;
inline constexpr std::uint32_t alt = 56;
inline constexpr std::uint32_t space = 57;
inline constexpr std::uint32_t capsLock = 58;
inline constexpr std::uint32_t f9 = 67;
inline constexpr std::uint32_t numLock = 69;
inline constexpr std::uint32_t super = 125;
} // namespace evdev

/// The three buttons of a mouse.
enum class Button { Left, Middle, Right };
/// Which way a key or a button goes.
enum class Way { Down, Up };

/// A mouse and a keyboard, used from outside. Each step has reached the desktop when it returns.
class Input {
public:
    Input() = default;
    Q_DISABLE_COPY_MOVE(Input)
    virtual ~Input() = default;

    /// To a place in the desktop's own units, y down.
    virtual void moveTo(QPoint place) = 0;
    virtual void button(Button button, Way way) = 0;
    /// A key by its evdev code.
    virtual void key(std::uint32_t code, Way way) = 0;

    void click(QPoint place, Button which = Button::Left);
    /// Presses at `from`, passes through the middle, and lets go at `to`.
    void drag(QPoint from, QPoint to);
    /// Presses `keys` in their order and lets go in the other.
    void press(const std::vector<std::uint32_t> &keys);
};

} // namespace lumacap::harness
