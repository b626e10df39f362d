#include "harness/XInput.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace lumacap::harness {

namespace {

constexpr std::uint32_t xCodeOffset = 8; // what X numbers keys by, less the evdev code

} // namespace

XInput::XInput(const QByteArray &display)
    : m_connection(display)
{
}

void XInput::fake(std::uint8_t type, std::uint8_t detail, QPoint place) const
{
    xcb_test_fake_input(m_connection.raw(), type, detail, XCB_CURRENT_TIME, m_connection.root(),
                        static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                        0);
    m_connection.finish();
}

void XInput::moveTo(QPoint place)
{
    fake(XCB_MOTION_NOTIFY, 0, place);
}

void XInput::button(Button button, Way way)
{
    const auto number = static_cast<std::uint8_t>(static_cast<int>(button) + 1);
    fake(way == Way::Down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number);
}

void XInput::key(std::uint32_t code, Way way)
{
    fake(way == Way::Down ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
         static_cast<std::uint8_t>(code + xCodeOffset));
}

} // namespace lumacap::harness
