#include "harness/FadingMenu.h"

#include "harness/WaitFor.h"

#include <algorithm>
#include <tuple>

#include <xcb/xcb.h>

namespace lumacap::harness {

namespace {

constexpr std::chrono::milliseconds pace{10};

} // namespace

FadingMenu::FadingMenu(const QByteArray &display, const QRect &area)
    : m_connection(display)
    , m_window(xcb_generate_id(m_connection.raw()))
{
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(m_connection.raw(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(),
                      static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                      static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(m_connection.raw(), m_window);
    m_connection.finish();
    m_steps = std::thread([this] { drawSteps(); });
}

FadingMenu::~FadingMenu()
{
    fadeOut(0);
}

void FadingMenu::fadeOut(int steps)
{
    if (!m_steps.joinable())
        return;
    const int last = m_stepsDrawn + steps;
    std::ignore = waitFor([&] { return m_stepsDrawn >= last; });
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
    }
    m_ended.notify_one();
    m_steps.join();
    xcb_unmap_window(m_connection.raw(), m_window);
    m_connection.finish();
}

void FadingMenu::drawSteps()
{
    using Clock = std::chrono::steady_clock;
    auto last = Clock::now();
    std::unique_lock lock(m_mutex);
    for (std::uint32_t colour = 0; !m_isEnding; colour += 0x010101) {
        xcb_change_window_attributes(m_connection.raw(), m_window, XCB_CW_BACK_PIXEL, &colour);
        xcb_clear_area(m_connection.raw(), 0, m_window, 0, 0, 0, 0);
        m_connection.finish();
        const auto now = Clock::now();
        m_longestStep = std::max(m_longestStep.load(),
                                 std::chrono::duration_cast<std::chrono::milliseconds>(now - last));
        last = now;
        ++m_stepsDrawn;
        m_ended.wait_for(lock, pace, [this] { return m_isEnding; });
    }
}

} // namespace lumacap::harness
