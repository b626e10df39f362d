#include "preferences/recorder/KeyCaptureView.h"

#include "platform/VirtualKeys.h"
#include "preferences/recorder/KeyPress.h"
#include "preferences/storage/EventFlags.h"
#include "preferences/storage/KeyCombo.h"

#include <QKeyEvent>

namespace lumacap {

KeyCaptureView::KeyCaptureView(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void KeyCaptureView::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    const auto press = keyPressOf(*event);
    if (!press)
        return;
    if (press->keyCode == virtualkey::escape) {
        if (onCancel)
            onCancel();
        return;
    }
    if ((press->flags & eventflag::deviceIndependent) != 0 && onKeyCombo)
        onKeyCombo(press->keyCode, KeyCombo::carbonModifiers(press->flags));
}

void KeyCaptureView::keyReleaseEvent(QKeyEvent *event)
{
    event->accept();
}

bool KeyCaptureView::focusNextPrevChild(bool next)
{
    return m_tabKey == TabKey::MovesFocus && QWidget::focusNextPrevChild(next);
}

} // namespace lumacap
