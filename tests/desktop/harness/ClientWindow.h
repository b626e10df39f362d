#pragma once

#include "harness/XConnection.h"

#include <QRect>

#include <cstdint>

namespace lumacap::harness {

/// What a window tells the window manager it is.
enum class WindowKind { Ordinary, Dock, FullScreen };

/// Another program's window of one colour, looked after by the window manager where there is one.
class ClientWindow {
public:
    /// Shows it and waits until it is on the screen; throws when it does not come up. A full-screen
    /// window ends up over the monitor that `area` (root pixels) lies on.
    ClientWindow(const QByteArray &display, const QRect &area,
                 WindowKind kind = WindowKind::Ordinary);

    /// Takes the keyboard's focus, and waits until it has it.
    void takeFocus() const;
    bool hasFocus() const;
    /// Takes the window off the screen.
    void hide() const;

private:
    void describe(WindowKind kind) const;
    void setAtoms(const char *property, const char *value) const;

    XConnection m_connection;
    std::uint32_t m_window = 0;
};

} // namespace lumacap::harness
