#include "harness/Clipboard.h"

#include <algorithm>
#include <stdexcept>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

QByteArray converted(PrivateDesktop &desktop, const char *type, std::chrono::milliseconds limit)
{
    // xclip waits for an owner that does not answer as long as it lives: the limit is ours.
    const Process reader(
        {u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, QString::fromLatin1(type)},
        desktop.environment(), desktop.newLog(u"clipboard"_s));
    const auto end = reader.waitForEnd(limit);
    return end == Ending{} ? reader.output() : QByteArray();
}

} // namespace

QList<QByteArray> clipboardTypes(PrivateDesktop &desktop)
{
    const QByteArray list = converted(desktop, "TARGETS", std::chrono::seconds(30)).trimmed();
    return list.isEmpty() ? QList<QByteArray>() : list.split('\n');
}

QByteArray clipboardBytes(PrivateDesktop &desktop, const char *type,
                          std::chrono::milliseconds limit)
{
    return converted(desktop, type, limit);
}

ClipboardWatch::ClipboardWatch(const QByteArray &display)
    : m_connection(display)
{
    xcb_connection_t *const raw = m_connection.raw();
    const XReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(raw, xcb_xfixes_query_version(raw, 5, 0), nullptr));
    if (!version)
        throw std::runtime_error("the server can't watch selections");
    xcb_xfixes_select_selection_input(raw, m_connection.root(), m_connection.atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    m_connection.finish();
}

int ClipboardWatch::changes()
{
    xcb_connection_t *const raw = m_connection.raw();
    const auto first = xcb_get_extension_data(raw, &xcb_xfixes_id)->first_event;
    m_connection.finish();
    while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(raw))) {
        if ((event->response_type & 0x7f) != first + XCB_XFIXES_SELECTION_NOTIFY)
            continue;
        const auto *change =
            reinterpret_cast<const xcb_xfixes_selection_notify_event_t *>(event.get());
        m_changes += change->owner != XCB_NONE ? 1 : 0;
    }
    return m_changes;
}

} // namespace lumacap::harness
