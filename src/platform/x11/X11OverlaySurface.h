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

class HeldKeys;
class KeyboardGrab;
class MonitorWatch;

/// Windows that no window manager looks after, in a process whose toolkit draws on the same X
/// server. One at a time: covering with another widget uncovers the first.
class X11OverlaySurface final : public QObject, public OverlaySurface {
public:
    /// Borrows `connection`, which outlives the object.
    explicit X11OverlaySurface(xcb::Connection &connection);
    Q_DISABLE_COPY_MOVE(X11OverlaySurface)
    ~X11OverlaySurface() override;

    void cover(QWidget &widget, const Screen &screen,
               std::function<void()> onScreenChanged) override;
    void uncover(QWidget &widget) override;

protected:
    /// Sees the presses on the covering window.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void show(const QRect &frame, QScreen &screen);
    void takeFocus();
    void end();
    void letKeyboardGo();
    void tellScreenChanged();

    xcb::Connection &m_connection;
    QPointer<QWidget> m_widget;
    std::uint32_t m_window = 0;
    std::optional<InputFocus> m_earlierFocus;
    std::unique_ptr<KeyboardGrab> m_keyboardGrab;
    std::unique_ptr<HeldKeys> m_heldKeys; // of the last covering
    std::unique_ptr<MonitorWatch> m_watch;
    std::function<void()> m_onScreenChanged;
    int m_coverings = 0;
};

} // namespace lumacap::x11
