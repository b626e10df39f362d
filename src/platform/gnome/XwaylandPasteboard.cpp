#include "platform/gnome/XwaylandPasteboard.h"

#include "platform/Spawn.h"
#include "platform/gnome/XServerStart.h"
#include "platform/xcb/Connection.h"
#include "platform/xcb/SelectionOwner.h"

#include <QCoroSignal>
#include <QPointer>

#include <chrono>

using namespace std::chrono_literals;

namespace lumacap::gnome {

namespace {

constexpr auto startLimit = 10s;

} // namespace

XwaylandPasteboard::XwaylandPasteboard() = default;

XwaylandPasteboard::~XwaylandPasteboard()
{
    drop();
}

void XwaylandPasteboard::clearContents()
{
    m_waiting.reset();
    if (m_clipboard)
        m_clipboard->clear();
    else
        startServer(); // whose start empties it: somebody else's contents may be there
}

void XwaylandPasteboard::write(std::unique_ptr<PasteboardItem> item)
{
    if (m_clipboard)
        return m_clipboard->own(std::move(item));
    m_waiting = std::move(item);
    startServer();
}

QCoro::Task<> XwaylandPasteboard::handOver()
{
    const QPointer self{this};
    if (m_server == Server::Starting)
        co_await qCoro(this, &XwaylandPasteboard::concluded, startLimit);
    if (self && m_clipboard)
        co_await m_clipboard->handOver();
}

void XwaylandPasteboard::startServer()
{
    if (m_server != Server::Unasked)
        return;
    m_server = Server::Starting;
    spawn(connectToServer());
}

QCoro::Task<> XwaylandPasteboard::connectToServer()
{
    const QPointer self{this};
    const bool answers = co_await xServerAnswers(qgetenv("DISPLAY"));
    if (!self)
        co_return;
    m_server = Server::Unasked; // asked again at the next copy
    if (answers)
        open();
    m_waiting.reset();
    Q_EMIT concluded();
}

void XwaylandPasteboard::open()
{
    auto connection = xcb::Connection::open();
    if (!connection)
        return;
    m_connection = std::move(*connection);
    // On the next turn: it is the connection itself that tells.
    connect(m_connection.get(), &xcb::Connection::closed, this, &XwaylandPasteboard::drop,
            Qt::QueuedConnection);
    m_clipboard = std::make_unique<xcb::SelectionOwner>(*m_connection);
    m_server = Server::There;
    m_clipboard->clear();
    if (m_waiting)
        m_clipboard->own(std::move(m_waiting));
}

void XwaylandPasteboard::drop()
{
    if (m_connection)
        m_connection->abandonReplies(); // or whoever waits for one would never end
    m_clipboard.reset();
    m_connection.reset();
    m_server = Server::Unasked;
}

} // namespace lumacap::gnome
