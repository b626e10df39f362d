#include "platform/xcb/SelectionOwner.h"

#include "platform/xcb/Connection.h"

#include <QCoroFuture>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstring>
#include <vector>

#include <xcb/xcb.h>

using namespace std::chrono_literals;

namespace lumacap::xcb {

namespace {

constexpr auto managerLimit = 5s;

/// A request older than our ownership was meant for the owner before us.
bool isBefore(xcb_timestamp_t time, xcb_timestamp_t since)
{
    return time != XCB_CURRENT_TIME && static_cast<std::int32_t>(time - since) < 0;
}

xcb_window_t createWindow(Connection &connection)
{
    const xcb_window_t window = xcb_generate_id(connection.raw());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.screen().root, 0,
                      0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    return window;
}

} // namespace

SelectionOwner::SelectionOwner(Connection &connection)
    : m_connection(connection)
    , m_transfers(connection)
    , m_window(createWindow(connection))
{
    connect(&connection, &Connection::received, this, &SelectionOwner::handleEvent);
    connection.flush();
}

SelectionOwner::~SelectionOwner()
{
    xcb_destroy_window(m_connection.raw(), m_window);
    xcb_flush(m_connection.raw());
}

void SelectionOwner::clear()
{
    xcb_set_selection_owner(m_connection.raw(), XCB_NONE, m_connection.atom("CLIPBOARD"),
                            XCB_CURRENT_TIME);
    m_connection.flush();
    m_item.reset();
}

void SelectionOwner::own(std::unique_ptr<PasteboardItem> item)
{
    // The selection is taken at once, not after the round trip that would tell the server's time:
    // what a person has just captured wins over whatever is owned. The time, which readers may ask
    // for, comes with the notice of this empty change of a property.
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_APPEND, m_window,
                        m_connection.atom("LUMACAP_TIME"), XCB_ATOM_INTEGER, 32, 0, nullptr);
    m_takenBy = xcb_set_selection_owner(m_connection.raw(), m_window,
                                        m_connection.atom("CLIPBOARD"), XCB_CURRENT_TIME)
                    .sequence;
    m_connection.flush();
    m_item = std::move(item);
}

QCoro::Task<> SelectionOwner::handOver()
{
    if (!m_item || m_item->types().isEmpty() || m_handOver)
        co_return;
    auto *const raw = m_connection.raw();
    const xcb_atom_t manager = m_connection.atom("CLIPBOARD_MANAGER");
    const auto question = xcb_get_selection_owner(raw, manager);
    const auto owner = co_await m_connection.reply<xcb_get_selection_owner_reply_t>(question);
    if (!owner || (*owner)->owner == XCB_NONE || !m_item)
        co_return;

    // Naming the best type keeps the manager from asking for every conversion of the picture.
    const xcb_atom_t property = m_connection.atom("LUMACAP_SAVE_TARGETS");
    const xcb_atom_t best = m_connection.atom(m_item->types().first());
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, m_window, property, XCB_ATOM_ATOM, 32, 1,
                        &best);
    // By no time of ours: the server may have ticked between the change of the property that told
    // it and the taking of the selection, and refuses it to a manager that comes with an earlier
    // time.
    xcb_convert_selection(raw, m_window, manager, m_connection.atom("SAVE_TARGETS"), property,
                          XCB_CURRENT_TIME);
    m_connection.flush();
    // A promise is kept once, however often a manager answers.
    m_handOver.emplace();
    m_handOver->start();
    QTimer::singleShot(managerLimit, this, &SelectionOwner::finishHandOver);
    co_await m_handOver->future();
}

void SelectionOwner::handleEvent(const void *event)
{
    switch (static_cast<const xcb_generic_event_t *>(event)->response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
        return handleRequest(*static_cast<const xcb_selection_request_event_t *>(event));
    case XCB_SELECTION_CLEAR:
        return handleClear(*static_cast<const xcb_selection_clear_event_t *>(event));
    case XCB_SELECTION_NOTIFY:
        return handleNotify(*static_cast<const xcb_selection_notify_event_t *>(event));
    case XCB_PROPERTY_NOTIFY:
        return handleOwnProperty(*static_cast<const xcb_property_notify_event_t *>(event));
    default:
        return;
    }
}

void SelectionOwner::handleOwnProperty(const xcb_property_notify_event_t &change)
{
    if (change.window == m_window && change.atom == m_connection.atom("LUMACAP_TIME"))
        m_ownedSince = change.time;
}

void SelectionOwner::handleClear(const xcb_selection_clear_event_t &clear)
{
    // Our own clear() before own() is reported too, when the new item is already there.
    const auto sequence = reinterpret_cast<const xcb_generic_event_t &>(clear).full_sequence;
    const bool isStale = static_cast<std::int32_t>(sequence - m_takenBy) < 0;
    const bool isFromTheServer = (clear.response_type & 0x80) == 0;
    if (!isStale && isFromTheServer && clear.owner == m_window
        && clear.selection == m_connection.atom("CLIPBOARD"))
        m_item.reset();
}

void SelectionOwner::handleNotify(const xcb_selection_notify_event_t &notify)
{
    if (notify.requestor == m_window && notify.selection == m_connection.atom("CLIPBOARD_MANAGER"))
        finishHandOver();
}

void SelectionOwner::finishHandOver()
{
    if (m_handOver)
        m_handOver->finish();
}

void SelectionOwner::handleRequest(const xcb_selection_request_event_t &request)
{
    if (request.owner != m_window)
        return;
    // Clients from before ICCCM name no property and mean the target's own name.
    const xcb_atom_t property = request.property != XCB_NONE ? request.property : request.target;
    const bool isServed = m_item && request.selection == m_connection.atom("CLIPBOARD")
        && !isBefore(request.time, m_ownedSince)
        && answer(request.requestor, property, request.target);

    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = isServed ? property : static_cast<xcb_atom_t>(XCB_NONE);
    // An event on the wire is 32 bytes; this one's structure is shorter.
    std::array<char, 32> wire{};
    std::memcpy(wire.data(), &notify, sizeof notify);
    xcb_send_event(m_connection.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
    m_connection.flush();
}

bool SelectionOwner::answer(std::uint32_t requestor, std::uint32_t property, std::uint32_t target)
{
    auto *const raw = m_connection.raw();
    if (target == m_connection.atom("TARGETS"))
        return answerTargets(requestor, property);
    if (target == m_connection.atom("MULTIPLE"))
        return answerMultiple(requestor, property);
    if (target == m_connection.atom("TIMESTAMP")) {
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER, 32,
                            1, &m_ownedSince);
        return true;
    }
    if (target == m_connection.atom("SAVE_TARGETS")) { // asked by a manager to learn that we can
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, requestor, property,
                            m_connection.atom("NULL"), 32, 0, nullptr);
        return true;
    }
    return answerBytes(requestor, property, target);
}

bool SelectionOwner::answerTargets(std::uint32_t requestor, std::uint32_t property)
{
    std::vector<xcb_atom_t> targets;
    for (const char *name : {"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS"})
        targets.push_back(m_connection.atom(name));
    for (const QByteArray &type : m_item->types())
        targets.push_back(m_connection.atom(type));
    xcb_change_property(m_connection.raw(), XCB_PROP_MODE_REPLACE, requestor, property,
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(targets.size()),
                        targets.data());
    return true;
}

bool SelectionOwner::answerMultiple(std::uint32_t requestor, std::uint32_t property)
{
    auto *const raw = m_connection.raw();
    constexpr std::uint32_t mostPairs = 64;
    // Of any type: some clients write the pairs as plain atoms.
    const auto question =
        xcb_get_property(raw, 0, requestor, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 2 * mostPairs);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(raw, question, nullptr));
    const bool holdsPairs = reply != nullptr && reply->format == 32 && reply->value_len > 0
        && reply->value_len % 2 == 0;
    if (!holdsPairs)
        return false;
    const auto *const atoms = static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()));
    std::vector<xcb_atom_t> pairs(atoms, atoms + reply->value_len);
    const xcb_atom_t multiple = m_connection.atom("MULTIPLE");
    for (std::size_t target = 0; target + 1 < pairs.size(); target += 2) {
        const bool isServed =
            pairs[target] != multiple && answer(requestor, pairs[target + 1], pairs[target]);
        if (!isServed)
            pairs[target + 1] = XCB_NONE;
    }
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, requestor, property,
                        m_connection.atom("ATOM_PAIR"), 32,
                        static_cast<std::uint32_t>(pairs.size()), pairs.data());
    return true;
}

bool SelectionOwner::answerBytes(std::uint32_t requestor, std::uint32_t property,
                                 std::uint32_t target)
{
    for (const QByteArray &type : m_item->types()) {
        if (m_connection.atom(type) != target)
            continue;
        const QByteArray bytes = m_item->bytes(type);
        if (bytes.isEmpty())
            return false;
        m_transfers.send(requestor, property, target, bytes);
        return true;
    }
    return false;
}

} // namespace lumacap::xcb
