#include "annotation/toolbar/BackgroundStyleRow.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap {

BackgroundStyleRow::BackgroundStyleRow(FrameBackgroundStyle style, QWidget *parent)
    : ToolbarButton(QAccessible::MenuItem, label(style), parent)
    , m_style(style)
    , m_label(label(style), toolbarlook::rowFont, FontWeight::Medium)
{
    setCheckable(true);
    setObjectName(u"frameBackground."_s + rowOf(frameBackgroundStyles, style).rawValue);
}

Size BackgroundStyleRow::frameSize() const
{
    const double needed =
        toolbarlook::rowTextLeft + std::ceil(m_label.size().width) + toolbarlook::rowTextRight;
    return {std::max(needed, m_width), toolbarlook::rowHeight};
}

QPainterPath BackgroundStyleRow::focusRing() const
{
    return {};
}

void BackgroundStyleRow::enterEvent(QEnterEvent *event)
{
    setFocus(Qt::PopupFocusReason);
    ToolbarButton::enterEvent(event);
}

void BackgroundStyleRow::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    const Size size = frameSize();
    // Not hasFocus: the window may not have the keyboard while the pointer is over it.
    const bool isHighlighted = window()->focusWidget() == this;
    if (isHighlighted) {
        const QPainterPath ground =
            continuousRoundedRect({0, 0, size.width, size.height}, toolbarlook::rowRadius);
        painter.fillPath(ground, theme.accent);
        if (isDown())
            painter.fillPath(ground, translucent(Qt::black, feedbacklook::pressedOpacity));
    }
    const QColor color = isHighlighted ? theme.onAccent : theme.text;
    if (isChecked())
        drawSymbol(painter, u"checkmark"_s,
                   {toolbarlook::rowMarkLeft, 0, toolbarlook::rowMarkSide, size.height},
                   toolbarlook::rowMarkSide, color);
    drawSymbol(painter, rowOf(frameBackgroundStyles, m_style).icon,
               {toolbarlook::rowIconLeft, 0, toolbarlook::rowIconSide, size.height},
               toolbarlook::rowIconSide, color);
    drawTextAtLeft(painter, m_label, {toolbarlook::rowTextLeft, 0, size.width, size.height}, color);
}

} // namespace lumacap
