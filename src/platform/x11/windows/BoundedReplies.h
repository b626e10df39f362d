#pragma once

#include "platform/xcb/Connection.h"

#include <QDeadlineTimer>

#include <chrono>
#include <utility>

namespace lumacap::x11 {

/// Takes the replies to many requests that were sent together. A connection gives each reply ten
/// seconds; a server that has stopped answering is not given them again for every one.
class BoundedReplies {
public:
    /// Borrows `connection`, which outlives the object.
    explicit BoundedReplies(xcb::Connection &connection)
        : m_connection(connection)
    {
    }

    /// The reply; null when the server refused, as it does for a window that has gone, or does not
    /// answer. Every request is asked about once.
    template <class Reply, class Cookie>
    QCoro::Task<xcb::Owned<Reply>> take(Cookie cookie)
    {
        xcb::Owned<Reply> taken;
        if (m_deadline.hasExpired()) {
            discard(cookie.sequence);
            co_return taken;
        }
        auto reply = co_await m_connection.reply<Reply>(cookie);
        if (reply)
            taken = std::move(*reply);
        co_return taken;
    }

private:
    void discard(unsigned int sequence);

    xcb::Connection &m_connection;
    QDeadlineTimer m_deadline{std::chrono::seconds(5)};
};

} // namespace lumacap::x11
