#include "platform/x11/KeyboardGrab.h"

#include <chrono>

using namespace std::chrono_literals;

namespace lumacap::x11 {

namespace {

/// Most who hold the keyboard let go soon: a menu, a window manager that moves a window.
constexpr auto usualHold = 2s;
constexpr auto pause = 20ms;
/// A terminal that reads a password, a virtual machine: asked seldom, for as long as it takes.
constexpr auto longPause = 250ms;

} // namespace

KeyboardGrab::KeyboardGrab(QWindow &window)
    : m_window(&window)
    , m_usualHold(usualHold)
{
    connect(&m_again, &QTimer::timeout, this, &KeyboardGrab::ask);
    m_again.start(pause);
    ask();
}

KeyboardGrab::~KeyboardGrab()
{
    if (m_window) // else the server released what was grabbed for it
        m_window->setKeyboardGrabEnabled(false);
}

void KeyboardGrab::ask()
{
    if (!m_again.isActive())
        return;
    if (!m_window || m_window->setKeyboardGrabEnabled(true))
        m_again.stop();
    else if (m_usualHold.hasExpired())
        m_again.setInterval(longPause);
}

} // namespace lumacap::x11
