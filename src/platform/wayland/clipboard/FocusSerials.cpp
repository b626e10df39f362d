#include "platform/wayland/clipboard/FocusSerials.h"

using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

constexpr auto moment = 500ms;

/// Serials count up, and begin anew after the largest number.
bool isLater(std::uint32_t one, std::uint32_t other)
{
    return static_cast<std::int32_t>(one - other) > 0;
}

} // namespace

void FocusSerials::keyboardEntered(std::uint32_t serial)
{
    m_keyboard = {serial, std::nullopt};
}

void FocusSerials::keyPressed(std::uint32_t serial)
{
    m_keyboard = {serial, std::nullopt};
}

void FocusSerials::keyboardLeft(Time now)
{
    m_keyboard.leftAt = now;
}

void FocusSerials::buttonPressed(std::uint32_t serial)
{
    m_pointer = {serial, std::nullopt};
}

void FocusSerials::pointerLeft(Time now)
{
    m_pointer.leftAt = now;
}

std::optional<std::uint32_t> FocusSerials::counting(const Focus &focus, Time now)
{
    const bool isOver = focus.leftAt && now - *focus.leftAt > moment;
    return isOver ? std::nullopt : focus.serial;
}

std::optional<std::uint32_t> FocusSerials::latest(Time now) const
{
    const auto keyboard = counting(m_keyboard, now);
    const auto pointer = counting(m_pointer, now);
    if (!keyboard || !pointer)
        return keyboard ? keyboard : pointer;
    return isLater(*pointer, *keyboard) ? pointer : keyboard;
}

} // namespace lumacap::wayland
