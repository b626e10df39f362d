#pragma once

#include "harness/XConnection.h"

#include <QRect>

#include <cstdint>
#include <vector>

namespace lumacap::harness {

/// Who places a window.
enum class Placement {
    ByManager,
    ByItself, ///< as menus are
};

/// Another program's window: white, by a connection of its own, with the properties the test gives
/// it.
class PlainWindow {
public:
    /// Makes it over `area` (root pixels), not yet shown; as a child of `parent` where one is
    /// given. Its place is one the user chose, which window managers keep.
    PlainWindow(const QByteArray &display, const QRect &area,
                Placement placement = Placement::ByManager, std::uint32_t parent = 0);
    /// One that is on the screen, where its manager puts it.
    static PlainWindow shown(const QByteArray &display, const QRect &area);

    std::uint32_t id() const { return m_id; }
    const XConnection &connection() const { return m_connection; }

    /// Bytes of the type named.
    void setText(const char *property, const char *type, const QByteArray &text) const;
    /// The title as programs of today set it.
    void setTitle(const QByteArray &title) const;
    void setNumbers(const char *property, const std::vector<std::uint32_t> &numbers,
                    const char *type = "CARDINAL") const;
    void setAtoms(const char *property, const std::vector<const char *> &names) const;

    /// Asks the window manager for no frame around it, before it is shown.
    void renounceDecoration() const;

    /// Puts it on the screen and waits until it is there.
    void show() const;
    /// Waits until the window manager counts it among its windows, which is a little later.
    void requireManaged() const;
    /// Whether the window manager has it above all its other windows.
    bool isFrontmost() const;
    bool isOnScreen() const;
    void hide() const;
    /// Takes the keyboard's focus, and waits until it has it.
    void takeFocus() const;
    bool hasFocus() const;
    /// From now on it wants keys and presses of the pointer's buttons, and counts them.
    void listen() const;
    /// Presses of buttons, and both presses and releases of keys, since `listen`.
    int buttonPresses();
    int keyEvents();
    /// Puts it above the others, without the help of a window manager.
    void raise() const;
    void place(const QRect &area) const;
    void setBorder(std::uint32_t pixels) const;
    /// Asks the window manager for something with a message about this window.
    void ask(const char *message, const std::vector<std::uint32_t> &data) const;
    /// Asks it to show another desktop.
    void switchToDesktop(std::uint32_t desktop) const;
    /// Takes it from the server.
    void destroy() const;

    /// The whole of the root's child that it is in, in root pixels; its own where it is that child.
    QRect outermostFrame() const;

private:
    void send(std::uint32_t about, const char *message,
              const std::vector<std::uint32_t> &data) const;
    QByteArray managed() const;
    void countEvents();

    XConnection m_connection;
    std::uint32_t m_id = 0;
    int m_buttonPresses = 0;
    int m_keyEvents = 0;
};

} // namespace lumacap::harness
