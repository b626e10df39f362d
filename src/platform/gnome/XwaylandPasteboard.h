#pragma once

#include "platform/Pasteboard.h"

#include <QObject>

#include <memory>

namespace lumacap::xcb {
class Connection;
class SelectionOwner;
} // namespace lumacap::xcb

namespace lumacap::gnome {

/// The clipboard by way of the X server that the desktop runs for X11 programs: of Wayland programs
/// only the one with the focus may fill it. The desktop carries what is offered over to them, and
/// keeps it when we have gone. The server starts with the first copy.
class XwaylandPasteboard final : public QObject, public Pasteboard {
    Q_OBJECT

public:
    XwaylandPasteboard();
    Q_DISABLE_COPY_MOVE(XwaylandPasteboard)
    ~XwaylandPasteboard() override;

    void clearContents() override;
    void write(std::unique_ptr<PasteboardItem> item) override;
    QCoro::Task<> handOver() override;

Q_SIGNALS:
    /// The server is there, or will not be.
    void concluded();

private:
    enum class Server { Unasked, Starting, There };

    void startServer();
    QCoro::Task<> connectToServer();
    void open();
    void drop();

    Server m_server = Server::Unasked;
    std::unique_ptr<xcb::Connection> m_connection;
    std::unique_ptr<xcb::SelectionOwner> m_clipboard; // goes before its connection
    /// What is offered as soon as the server is there.
    std::unique_ptr<PasteboardItem> m_waiting;
};

} // namespace lumacap::gnome
