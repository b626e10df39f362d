#include "platform/x11/windows/X11WindowList.h"

#include "platform/Spawn.h"
#include "platform/WindowOwner.h"
#include "platform/x11/windows/ProcessIds.h"
#include "platform/x11/windows/RootState.h"
#include "platform/x11/windows/WindowAtoms.h"
#include "platform/x11/windows/WindowFacts.h"
#include "platform/x11/windows/WindowRecords.h"
#include "platform/x11/windows/WindowWatch.h"
#include "platform/xcb/Connection.h"

#include <QPointer>

#include <algorithm>
#include <chrono>

#include <xcb/xcb.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::x11 {

namespace {

/// A window that opens, closes or is dragged is many changes, which are read as one.
constexpr auto burst = 15ms;
/// What goes on changing is read no more often, for hundreds of windows cost a processor many
/// milliseconds each time.
constexpr auto pause = 200ms;

constexpr std::uint32_t rootEvents =
    XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;

bool isOnAMonitor(const QRect &frame, const std::vector<Monitor> &monitors)
{
    return std::ranges::any_of(
        monitors, [&frame](const Monitor &monitor) { return monitor.frame.intersects(frame); });
}

bool mayChangeTheList(const xcb_generic_event_t &event, const WindowAtoms &atoms)
{
    switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY:
        return tellsOfWindows(atoms,
                              reinterpret_cast<const xcb_property_notify_event_t &>(event).atom);
    case XCB_CONFIGURE_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_DESTROY_NOTIFY:
        return true;
    default:
        return false;
    }
}

} // namespace

/// What there is only while the windows are followed.
struct X11WindowList::Following {
    Following(const WindowAtoms &known, xcb::Connection &connection)
        : atoms(known)
        , watch(connection)
    {
    }

    WindowAtoms atoms;
    WindowWatch watch;
};

X11WindowList::X11WindowList(xcb::Connection &connection, const ApplicationNames &names)
    : m_connection(connection)
    , m_names(names)
{
    m_settling.setSingleShot(true);
    connect(&m_settling, &QTimer::timeout, this, [this] { spawn(readAnew()); });
    connect(&connection, &xcb::Connection::received, this, &X11WindowList::handleEvent);
    prepareProcessIds(connection);
}

X11WindowList::~X11WindowList() = default;

QCoro::Task<> X11WindowList::prepare()
{
    const QPointer self(this);
    const unsigned int round = ++m_round;
    const xcb_window_t root = m_connection.screen().root;
    const auto asked = xcb_get_window_attributes(m_connection.raw(), root);
    const auto attributes = co_await m_connection.reply<xcb_get_window_attributes_reply_t>(asked);
    if (!self || m_round != round || !attributes)
        co_return;
    const auto atoms = co_await queryWindowAtoms(m_connection);
    if (!self || m_round != round || !atoms)
        co_return;
    if (!m_following)
        m_following = std::make_unique<Following>(*atoms, m_connection);
    m_following->watch.add(root, (*attributes)->your_event_mask, rootEvents);
    co_await read();
}

void X11WindowList::release()
{
    ++m_round;
    m_settling.stop();
    m_pause.setRemainingTime(0);
    m_following.reset();
    m_windows.clear();
}

QCoro::Task<> X11WindowList::read()
{
    const auto isOver = [self = QPointer(this), round = m_round] {
        return !self || self->m_round != round;
    };
    const WindowAtoms atoms = m_following->atoms;
    const auto monitors = co_await queryMonitors(m_connection);
    if (isOver() || !monitors)
        co_return;
    const auto root = co_await queryRootState(m_connection, atoms);
    if (isOver() || !root)
        co_return;
    const auto seen = co_await querySeenWindows(m_connection, atoms, *root);
    if (isOver())
        co_return;
    watch(seen); // before they are asked, so that no change falls between
    const auto all = co_await queryWindowFacts(m_connection, atoms, seen);
    if (!isOver())
        keep(*root, *monitors, all);
}

QCoro::Task<> X11WindowList::readAnew()
{
    if (m_isReading) {
        m_settling.start(burst);
        co_return;
    }
    const QPointer self(this);
    m_isReading = true;
    co_await read();
    if (!self)
        co_return;
    m_isReading = false;
    m_pause.setRemainingTime(pause);
}

void X11WindowList::watch(const std::vector<SeenWindow> &seen)
{
    QSet<std::uint32_t> watched{m_connection.screen().root};
    for (const SeenWindow &window : seen) {
        m_following->watch.add(window.id, window.eventMask, XCB_EVENT_MASK_PROPERTY_CHANGE);
        watched.insert(window.id);
    }
    m_following->watch.keepOnly(watched);
}

void X11WindowList::keep(const RootState &root, const std::vector<Monitor> &monitors,
                         const std::vector<WindowFacts> &all)
{
    const WindowAtoms &atoms = m_following->atoms;
    m_windows.clear();
    for (const WindowFacts &facts : all) {
        const QRect frame = visibleFrame(facts, root);
        if (!isShown(facts, atoms, root) || !isOnAMonitor(frame, monitors))
            continue;
        const QRect &main = monitors.front().frame;
        m_windows.push_back({.layer = layerOf(facts, atoms),
                             .windowNumber = facts.window.id,
                             .ownerPID = facts.processId,
                             .bounds = topLeftFrame(frame, main, backingFactorOf(main)),
                             .ownerName = ownerName({facts.applicationId, facts.className,
                                                     facts.classInstance, facts.processId},
                                                    m_names),
                             .windowName = facts.title});
    }
}

void X11WindowList::handleEvent(const void *event)
{
    // The first change of a burst starts the wait, so that endless changes don't prolong it.
    const auto &happened = *static_cast<const xcb_generic_event_t *>(event);
    if (m_following && !m_settling.isActive() && mayChangeTheList(happened, m_following->atoms))
        m_settling.start(std::max(burst, std::chrono::milliseconds(m_pause.remainingTime())));
}

} // namespace lumacap::x11
