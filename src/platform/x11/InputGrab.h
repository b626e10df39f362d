#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

struct xcb_connection_t;

namespace lumacap::x11 {

/// Pointer and keyboard for one window of the toolkit, for as long as the object lives.
///
/// Another program's open menu holds both, until a press outside it. So they are asked for again
/// and again: the keyboard for two seconds and once more when the pointer is got, the pointer until
/// it is got or the object goes.
class InputGrab final : public QObject {
public:
    /// Asks at once. `window`, which belongs to the toolkit's connection `toolkit`, is on the
    /// screen and may go before the object.
    InputGrab(xcb_connection_t *toolkit, QWindow &window);
    Q_DISABLE_COPY_MOVE(InputGrab)
    /// Releases both.
    ~InputGrab() override;

private:
    void ask();
    bool grabPointer();

    xcb_connection_t *m_toolkit;
    QPointer<QWindow> m_window;
    QDeadlineTimer m_keyboardLimit;
    QTimer m_again;
    bool m_hasPointer = false;
    bool m_hasKeyboard = false;
};

} // namespace lumacap::x11
