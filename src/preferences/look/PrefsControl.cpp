#include "preferences/look/PrefsControl.h"

#include "preferences/look/PrefsTheme.h"

#include <QPainter>

namespace lumacap {

PrefsControl::PrefsControl(QAccessible::Role role, const QString &name, QWidget *parent)
    : PaintedButton(role, name, parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void PrefsControl::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintFace(painter, prefsThemeOf(palette()));
}

} // namespace lumacap
