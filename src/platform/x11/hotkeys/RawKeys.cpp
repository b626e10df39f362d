#include "platform/x11/hotkeys/RawKeys.h"

#include "platform/Spawn.h"
#include "platform/xcb/Connection.h"

#include <QPointer>

#include <array>
#include <utility>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace lumacap::x11 {

namespace {

bool isOfferedBy(xcb::Connection &connection)
{
    auto *const raw = connection.raw();
    const auto *const extension = xcb_get_extension_data(raw, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    // From 2.1 on the server tells a client that introduced itself so of keys that another holds.
    constexpr std::uint16_t major = 2;
    constexpr std::uint16_t minor = 1;
    const xcb::Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        raw, xcb_input_xi_query_version(raw, major, minor), nullptr));
    connection.flush();
    return version && version->major_version >= major
        && (version->major_version > major || version->minor_version >= minor);
}

} // namespace

RawKeys::RawKeys(xcb::Connection &connection, OnPressed onPressed)
    : m_connection(connection)
    , m_onPressed(std::move(onPressed))
    , m_isOffered(isOfferedBy(connection))
{
    connect(&connection, &xcb::Connection::received, this, &RawKeys::receive);
}

RawKeys::~RawKeys()
{
    stop();
}

void RawKeys::listen()
{
    if (!m_isOffered || std::exchange(m_isListening, true))
        return;
    ++m_listenings;
    m_held.reset();
    m_told.reset();
    select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    spawn(learnHeldKeys());
}

void RawKeys::stop()
{
    if (std::exchange(m_isListening, false))
        select(0);
}

void RawKeys::select(std::uint32_t events)
{
    struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } const selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, events};
    xcb_input_xi_select_events(m_connection.raw(), m_connection.screen().root, 1,
                               &selection.header);
    m_connection.flush();
}

/// Those that went down before there was anybody to be told.
QCoro::Task<> RawKeys::learnHeldKeys()
{
    const QPointer self{this};
    const int listening = m_listenings;
    const auto question = xcb_query_keymap(m_connection.raw());
    const auto answer = co_await m_connection.reply<xcb_query_keymap_reply_t>(question);
    if (self && answer && listening == m_listenings)
        m_held |= pressedKeys(**answer) & ~m_told;
}

void RawKeys::receive(const void *event)
{
    const auto &key = *static_cast<const xcb_input_raw_key_press_event_t *>(event);
    const bool isOfInput = (key.response_type & ~0x80U) == XCB_GE_GENERIC
        && key.extension == xcb_get_extension_data(m_connection.raw(), &xcb_input_id)->major_opcode;
    if (!m_isListening || !isOfInput || key.detail >= m_held.size())
        return;
    m_told.set(key.detail);
    if (key.event_type == XCB_INPUT_RAW_KEY_RELEASE)
        m_held.reset(key.detail);
    // A remote screen repeats a key by pressing it again and again.
    if (key.event_type != XCB_INPUT_RAW_KEY_PRESS || m_held[key.detail])
        return;
    const KeyCodes before = m_held;
    m_held.set(key.detail);
    m_onPressed(static_cast<std::uint8_t>(key.detail), before, key.time);
}

} // namespace lumacap::x11
