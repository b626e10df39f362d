#include "harness/wayland/FakeInput.h"

#include <array>
#include <stdexcept>

#include <linux/input-event-codes.h>
#include <protocols/fake-input.h>
#include <wayland-client.h>

namespace lumacap::harness {

namespace {

constexpr std::uint32_t version = 4; // the one with a keyboard
constexpr std::array buttonCodes{BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};

} // namespace

FakeInput::FakeInput(const QString &socket)
    : m_compositor(socket)
    , m_input(
          m_compositor.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, version))
{
    if (m_input == nullptr)
        throw std::runtime_error("KWin takes no input from tests");
    org_kde_kwin_fake_input_authenticate(m_input, "tests", "tests");
    m_compositor.finish();
}

FakeInput::~FakeInput()
{
    org_kde_kwin_fake_input_destroy(m_input);
    wl_display_flush(m_compositor.raw());
}

void FakeInput::moveTo(QPoint place)
{
    org_kde_kwin_fake_input_pointer_motion_absolute(m_input, wl_fixed_from_double(place.x()),
                                                    wl_fixed_from_double(place.y()));
    m_compositor.finish();
}

void FakeInput::button(Button button, Way way)
{
    const auto code = static_cast<std::uint32_t>(buttonCodes.at(static_cast<std::size_t>(button)));
    org_kde_kwin_fake_input_button(m_input, code, way == Way::Down ? 1 : 0);
    m_compositor.finish();
}

void FakeInput::key(std::uint32_t code, Way way)
{
    org_kde_kwin_fake_input_keyboard_key(m_input, code, way == Way::Down ? 1 : 0);
    m_compositor.finish();
}

} // namespace lumacap::harness
