#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace lumacap::x11 {

/// The keyboard for one window of the toolkit, for as long as the object lives.
///
/// Another program may hold it: an open menu until a press outside it, a virtual machine for as
/// long as it likes. So it is asked for again and again.
///
/// The pointer needs no grab. Presses on the window are the window's, until a menu that holds the
/// pointer has had its press; a drag that begins there stays the window's to its end, wherever it
/// leads; and the pointer on another screen belongs to what is there.
class KeyboardGrab final : public QObject {
public:
    /// Asks at once. `window`, which is on the screen, may go before the object.
    explicit KeyboardGrab(QWindow &window);
    Q_DISABLE_COPY_MOVE(KeyboardGrab)
    /// Releases it.
    ~KeyboardGrab() override;

    /// Asks now; nothing when it has it.
    void ask();

private:
    QPointer<QWindow> m_window;
    QDeadlineTimer m_usualHold;
    QTimer m_again; // while it has not got it
};

} // namespace lumacap::x11
