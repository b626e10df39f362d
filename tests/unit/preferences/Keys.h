#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace lumacap::tests {

/// A key as an X server numbers it, with what the layout makes of it.
struct Key {
    quint32 scanCode;
    int symbol;
    quint32 nativeSymbol = 0; ///< where more is told by it
};

inline constexpr Key letterA{38, Qt::Key_A};
inline constexpr Key letterQOfAFrenchLayout{38, Qt::Key_Q};
inline constexpr Key digitFive{14, Qt::Key_5};
inline constexpr Key escapeKey{9, Qt::Key_Escape};
inline constexpr Key tabKey{23, Qt::Key_Tab};
inline constexpr Key spaceKey{65, Qt::Key_Space};
inline constexpr Key functionFive{71, Qt::Key_F5};
inline constexpr quint32 capsLockIsOn = 0x02;

inline QKeyEvent keyPress(const Key &key, Qt::KeyboardModifiers modifiers = {}, quint32 native = 0)
{
    return {QEvent::KeyPress, key.symbol, modifiers, key.scanCode, key.nativeSymbol, native};
}

/// The key to whoever has the focus, down and up again.
inline void type(const Key &key, Qt::KeyboardModifiers modifiers = {}, quint32 native = 0)
{
    QKeyEvent press = keyPress(key, modifiers, native);
    QKeyEvent release(QEvent::KeyRelease, key.symbol, modifiers, key.scanCode, key.nativeSymbol,
                      native);
    for (QKeyEvent *const event : {&press, &release}) {
        if (QWidget *const focused = QApplication::focusWidget())
            QCoreApplication::sendEvent(focused, event);
    }
}

} // namespace lumacap::tests
