#include "preferences/window/PrefsDivider.h"

#include "graphics/ColorMixing.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsTheme.h"

#include <QPainter>

namespace lumacap {

PrefsDivider::PrefsDivider(QWidget *parent)
    : QWidget(parent)
{
    setFixedHeight(prefslook::dividerHeight);
}

void PrefsDivider::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(),
                     translucent(prefsThemeOf(palette()).primary, prefslook::dividerOpacity));
}

} // namespace lumacap
