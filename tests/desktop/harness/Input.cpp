#include "harness/Input.h"

#include <ranges>

namespace lumacap::harness {

void Input::click(QPoint place, Button which)
{
    moveTo(place);
    button(which, Way::Down);
    button(which, Way::Up);
}

void Input::drag(QPoint from, QPoint to)
{
    moveTo(from);
    button(Button::Left, Way::Down);
    moveTo((from + to) / 2);
    moveTo(to);
    button(Button::Left, Way::Up);
}

void Input::press(const std::vector<std::uint32_t> &keys)
{
    for (const std::uint32_t code : keys)
        key(code, Way::Down);
    for (const std::uint32_t code : keys | std::views::reverse)
        key(code, Way::Up);
}

} // namespace lumacap::harness
