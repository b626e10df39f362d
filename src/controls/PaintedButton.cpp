#include "controls/PaintedButton.h"

#include "controls/Accessibility.h"
#include "graphics/ColorMixing.h"

#include <QKeyEvent>

namespace lumacap {

PaintedButton::PaintedButton(QAccessible::Role role, const QString &name, QWidget *parent)
    : QAbstractButton(parent)
    , m_role(role)
{
    describeToAssistiveTechnology();
    setAccessibleName(name);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void PaintedButton::describe(QAccessible::State & /*state*/) const { }

QColor PaintedButton::feedback(const QColor &ink) const
{
    if (!isEnabled())
        return Qt::transparent;
    if (isDown())
        return translucent(ink, feedbacklook::pressedOpacity);
    return underMouse() ? translucent(ink, feedbacklook::hoverOpacity) : Qt::transparent;
}

void PaintedButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space)
        QAbstractButton::keyPressEvent(event);
    else
        event->ignore();
}

void PaintedButton::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space)
        QAbstractButton::keyReleaseEvent(event);
    else
        event->ignore();
}

void PaintedButton::focusInEvent(QFocusEvent *event)
{
    // A menu that closes, or a window that comes back, gives the focus back as it was.
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
        m_showsFocus = reason != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

bool PaintedButton::hitButton(const QPoint &position) const
{
    return rect().contains(position);
}

} // namespace lumacap
