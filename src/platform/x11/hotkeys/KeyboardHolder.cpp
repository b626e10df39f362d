#include "platform/x11/hotkeys/KeyboardHolder.h"

#include "platform/Spawn.h"
#include "platform/xcb/Connection.h"

#include <QPointer>

#include <utility>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

void select(xcb::Connection &connection, std::uint32_t window, std::uint32_t events)
{
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &events);
}

std::uint32_t makeHiddenWindow(xcb::Connection &connection)
{
    const std::uint32_t window = xcb_generate_id(connection.raw());
    xcb_create_window(connection.raw(), 0, window, connection.screen().root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

} // namespace

KeyboardHolder::KeyboardHolder(xcb::Connection &connection, std::function<void()> onChanged)
    : m_connection(connection)
    , m_onChanged(std::move(onChanged))
    , m_neverShown(makeHiddenWindow(connection))
{
    connect(&connection, &xcb::Connection::received, this, &KeyboardHolder::receive);
    // The root is told when there is no window that has the focus.
    select(m_connection, m_connection.screen().root, XCB_EVENT_MASK_FOCUS_CHANGE);
    look();
}

KeyboardHolder::~KeyboardHolder()
{
    follow(XCB_INPUT_FOCUS_NONE);
    select(m_connection, m_connection.screen().root, XCB_EVENT_MASK_NO_EVENT);
    xcb_destroy_window(m_connection.raw(), m_neverShown);
    m_connection.flush();
}

void KeyboardHolder::receive(const void *event)
{
    constexpr unsigned sentByAClient = 0x80;
    const unsigned type =
        static_cast<const xcb_generic_event_t *>(event)->response_type & ~sentByAClient;
    if (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT)
        look();
}

void KeyboardHolder::look()
{
    m_hasChanged = true;
    if (!m_isLooking)
        spawn(lookUntilSettled());
}

/// Until nothing happened between following the window that has the focus and asking who holds the
/// keyboard: from then on that window is told of every change.
QCoro::Task<> KeyboardHolder::lookUntilSettled()
{
    const QPointer self{this};
    auto *const raw = m_connection.raw();
    m_isLooking = true;
    while (std::exchange(m_hasChanged, false)) {
        const auto focusQuestion = xcb_get_input_focus(raw);
        // Never granted, for a window that is not on the screen; what is refused first is the
        // keyboard that another client holds.
        const auto grabQuestion = xcb_grab_keyboard(raw, 0, m_neverShown, XCB_CURRENT_TIME,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const auto focus = co_await m_connection.reply<xcb_get_input_focus_reply_t>(focusQuestion);
        if (!self)
            co_return;
        const auto grab = co_await m_connection.reply<xcb_grab_keyboard_reply_t>(grabQuestion);
        if (!self)
            co_return;
        if (!focus || !grab)
            break;
        if (focus->get()->focus != m_followed) {
            follow(focus->get()->focus);
            m_hasChanged = true; // whatever happened before it was followed
            continue;
        }
        const bool isAnother = grab->get()->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
        if (std::exchange(m_isAnother, isAnother) != isAnother)
            m_onChanged();
    }
    m_isLooking = false;
}

void KeyboardHolder::follow(std::uint32_t window)
{
    const auto isOrdinary = [this](std::uint32_t focus) {
        return focus != XCB_INPUT_FOCUS_NONE && focus != XCB_INPUT_FOCUS_POINTER_ROOT
            && focus != m_connection.screen().root;
    };
    const std::uint32_t before = std::exchange(m_followed, window);
    // Either may have gone meanwhile, which nobody minds.
    if (isOrdinary(before))
        select(m_connection, before, XCB_EVENT_MASK_NO_EVENT);
    if (isOrdinary(window))
        select(m_connection, window, XCB_EVENT_MASK_FOCUS_CHANGE);
}

} // namespace lumacap::x11
