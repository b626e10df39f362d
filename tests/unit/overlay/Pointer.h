#pragma once

#include "graphics/Geometry.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace lumacap::tests {

/// A pointer and a keyboard over a widget whose points are those of its canvas.
class Pointer {
public:
    explicit Pointer(QWidget &widget)
        : m_widget{widget}
    {
    }

    void move(double x, double y) { send(QEvent::MouseMove, x, y, Qt::NoButton); }
    void press(double x, double y)
    {
        m_buttons = Qt::LeftButton;
        send(QEvent::MouseButtonPress, x, y, Qt::LeftButton);
    }
    void release(double x, double y)
    {
        m_buttons = Qt::NoButton;
        send(QEvent::MouseButtonRelease, x, y, Qt::LeftButton);
    }
    void click(double x, double y)
    {
        press(x, y);
        release(x, y);
    }
    void drag(double fromX, double fromY, double toX, double toY)
    {
        press(fromX, fromY);
        move(toX, toY);
        release(toX, toY);
    }
    /// `scanCode` as X numbers keys; 0 for a key without a place.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, quint32 scanCode = 0)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
        QCoreApplication::sendEvent(&m_widget, &event);
    }

private:
    /// `y` counts up from the widget's lower edge.
    void send(QEvent::Type type, double x, double y, Qt::MouseButton button)
    {
        const QPointF place(x, m_widget.height() - y);
        QMouseEvent event(type, place, place, button, m_buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_widget, &event);
    }

    QWidget &m_widget;
    Qt::MouseButtons m_buttons = Qt::NoButton;
};

} // namespace lumacap::tests
