#pragma once

#include "platform/Screens.h"

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// The monitors of an X server as screens. Each question is one round trip to the server.
class X11Screens final : public Screens {
public:
    /// Borrows `connection`, which outlives the object.
    explicit X11Screens(xcb::Connection &connection);

    QCoro::Task<> prepare() override;
    std::optional<Screen> mainScreen() const override;
    std::vector<Screen> screens() const override;
    /// The middle of the pixel that the pointer points at.
    std::optional<Point<Global>> pointerPosition() const override;

private:
    xcb::Connection &m_connection;
};

} // namespace lumacap::x11
