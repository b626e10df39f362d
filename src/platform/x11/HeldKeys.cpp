#include "platform/x11/HeldKeys.h"

#include "platform/xcb/Owned.h"

#include <chrono>
#include <span>

#include <xcb/xcb.h>

using namespace std::chrono_literals;

namespace lumacap::x11 {

namespace {

/// Longer than anybody means to hold a key that ends something; a key may also be stuck.
constexpr auto limit = 1s;
constexpr auto pause = 10ms;

} // namespace

KeyCodes pressedKeys(const xcb_query_keymap_reply_t &reply)
{
    KeyCodes keys;
    for (std::size_t code = 0; code < keys.size(); ++code)
        keys[code] = (reply.keys[code / 8] >> code % 8 & 1) != 0;
    return keys;
}

KeyCodes heldKeys(xcb_connection_t *connection)
{
    const auto keyQuestion = xcb_query_keymap(connection);
    const auto modifierQuestion = xcb_get_modifier_mapping(connection);
    const xcb::Owned<xcb_query_keymap_reply_t> pressed(
        xcb_query_keymap_reply(connection, keyQuestion, nullptr));
    const xcb::Owned<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(connection, modifierQuestion, nullptr));
    if (!pressed || !modifiers)
        return {};
    KeyCodes keys = pressedKeys(*pressed);
    const auto count = xcb_get_modifier_mapping_keycodes_length(modifiers.get());
    for (const auto code : std::span(xcb_get_modifier_mapping_keycodes(modifiers.get()),
                                     static_cast<std::size_t>(count)))
        keys.reset(code);
    return keys;
}

HeldKeys::HeldKeys(xcb_connection_t *connection, const KeyCodes &keys)
    : m_connection(connection)
    , m_keys(keys)
    , m_limit(limit)
{
    if (m_keys.none())
        return;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto question = xcb_grab_keyboard(connection, 0, root, XCB_CURRENT_TIME,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const xcb::Owned<xcb_grab_keyboard_reply_t> answer(
        xcb_grab_keyboard_reply(connection, question, nullptr));
    if (!answer || answer->status != XCB_GRAB_STATUS_SUCCESS)
        return; // somebody else holds it, who gets the keys in any case
    connect(&m_again, &QTimer::timeout, this, &HeldKeys::look);
    m_again.start(pause);
}

HeldKeys::~HeldKeys()
{
    letGo();
}

void HeldKeys::look()
{
    if (m_limit.hasExpired() || (heldKeys(m_connection) & m_keys).none())
        letGo();
}

void HeldKeys::letGo()
{
    if (!m_again.isActive())
        return;
    m_again.stop();
    xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
    xcb_flush(m_connection);
}

} // namespace lumacap::x11
