#pragma once

#include "platform/OverlaySurface.h"
#include "platform/x11/InputFocus.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

class KeyboardGrab;
class MonitorWatch;

/// Windows that no window manager looks after, in a process whose toolkit draws on the same X
/// server. One at a time: covering with another widget uncovers the first.
class X11OverlaySurface final : public OverlaySurface {
public:
    /// Borrows `connection`, which outlives the object.
    explicit X11OverlaySurface(xcb::Connection &connection);
    ~X11OverlaySurface() override;

    void cover(QWidget &widget, const Screen &screen,
               std::function<void()> onScreenChanged) override;
    void uncover(QWidget &widget) override;

private:
    void show(const QRect &frame, QScreen &screen);
    void end();
    void tellScreenChanged();

    xcb::Connection &m_connection;
    QPointer<QWidget> m_widget;
    std::uint32_t m_window = 0;
    std::optional<InputFocus> m_earlierFocus;
    std::unique_ptr<KeyboardGrab> m_keyboardGrab;
    std::unique_ptr<MonitorWatch> m_watch;
    std::function<void()> m_onScreenChanged;
    int m_coverings = 0;
    QObject m_context;
};

} // namespace lumacap::x11
