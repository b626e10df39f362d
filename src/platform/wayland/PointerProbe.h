#pragma once

#include "platform/wayland/Owned.h"

#include <QObject>
#include <QPointF>

#include <memory>
#include <optional>
#include <vector>

struct wl_buffer;
struct wl_compositor;
struct wl_pointer;
struct wl_pointer_listener;
struct wl_seat;
struct wl_seat_listener;
struct wl_shm;
struct wl_surface;
struct wp_viewporter;
struct zwlr_layer_shell_v1;

namespace lumacap::wayland {

class Connection;
class Outputs;

/// Invisible surfaces over outputs that wait for the pointer. They are gone when the object is.
class PointerProbe final : public QObject {
    Q_OBJECT

public:
    /// Over all `outputs`. Borrows both, which outlive the object.
    PointerProbe(Connection &connection, const Outputs &outputs);
    ~PointerProbe() override;
    Q_DISABLE_COPY_MOVE(PointerProbe)

Q_SIGNALS:
    /// The pointer, in the compositor's units, y down; nothing where the seat has none.
    void finished(std::optional<QPointF> pointer);

private:
    class Cover;

    static const wl_seat_listener &seatListener();
    static const wl_pointer_listener &pointerListener();
    void followPointer(bool hasOne);
    void cover();
    void enter(wl_surface *surface, QPointF place);

    Connection &m_connection;
    const Outputs &m_outputs;
    Owned<wl_compositor> m_compositor;
    Owned<wl_shm> m_memory;
    Owned<wp_viewporter> m_viewporter;
    Owned<zwlr_layer_shell_v1> m_shell;
    Owned<wl_seat> m_seat;
    Owned<wl_pointer> m_pointer; // ends before its seat
    Owned<wl_buffer> m_nothing; // one pixel of it
    std::vector<std::unique_ptr<Cover>> m_covers; // end before what they are made of
};

} // namespace lumacap::wayland
