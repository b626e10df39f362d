#include "platform/x11/InputGrab.h"

#include "platform/xcb/Owned.h"

#include <chrono>
#include <cstdint>

#include <xcb/xcb.h>

using namespace std::chrono_literals;

namespace lumacap::x11 {

namespace {

constexpr auto pause = 20ms;
// Whoever holds the keyboard alone for so long keeps it: a terminal that reads a password, a
// virtual machine.
constexpr auto keyboardLimit = 2s;

} // namespace

InputGrab::InputGrab(xcb_connection_t *toolkit, QWindow &window)
    : m_toolkit(toolkit)
    , m_window(&window)
    , m_keyboardLimit(keyboardLimit)
{
    connect(&m_again, &QTimer::timeout, this, &InputGrab::ask);
    m_again.start(pause);
    ask();
}

InputGrab::~InputGrab()
{
    if (!m_window) // the server released what was grabbed for it
        return;
    m_window->setMouseGrabEnabled(false);
    m_window->setKeyboardGrabEnabled(false);
}

void InputGrab::ask()
{
    if (!m_window) {
        m_again.stop();
        return;
    }
    const bool hadPointer = m_hasPointer;
    m_hasPointer = hadPointer || grabPointer();
    const bool isEarly = !m_keyboardLimit.hasExpired();
    if (!m_hasKeyboard && (isEarly || m_hasPointer != hadPointer))
        m_hasKeyboard = m_window->setKeyboardGrabEnabled(true);
    if (m_hasPointer && (m_hasKeyboard || !isEarly))
        m_again.stop();
}

/// On the toolkit's connection, which thereby gets the events: a grab of another one would keep
/// them from it.
bool InputGrab::grabPointer()
{
    // The toolkit says that it has the pointer also when it was refused. So the connection tries
    // first, in the older way that tells, and makes room for the toolkit's own grab, which it would
    // refuse otherwise. The two requests travel together: nobody else gets between them.
    const auto question = xcb_grab_pointer(
        m_toolkit, 0, static_cast<std::uint32_t>(m_window->winId()), XCB_EVENT_MASK_NO_EVENT,
        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const xcb::Owned<xcb_grab_pointer_reply_t> answer(
        xcb_grab_pointer_reply(m_toolkit, question, nullptr));
    if (!answer || answer->status != XCB_GRAB_STATUS_SUCCESS)
        return false;
    xcb_ungrab_pointer(m_toolkit, XCB_CURRENT_TIME);
    return m_window->setMouseGrabEnabled(true);
}

} // namespace lumacap::x11
