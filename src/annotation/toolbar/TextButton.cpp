#include "annotation/toolbar/TextButton.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPen>

#include <cmath>

namespace lumacap {

TextButton::TextButton(const QString &text, TextButtonStyle style, QWidget *parent)
    : ToolbarButton(QAccessible::Button, text, parent)
    , m_text(text, toolbarlook::textFont, FontWeight::Medium)
    , m_style(style)
{
}

Size TextButton::frameSize() const
{
    return {std::ceil(m_text.size().width) + 2 * toolbarlook::textButtonPadding,
            toolbarlook::textButtonHeight};
}

void TextButton::mousePressEvent(QMouseEvent *event)
{
    // Before the button is down: whoever loses the focus may hand it on, which lets the button go.
    if (m_style == TextButtonStyle::Prominent && event->button() == Qt::LeftButton)
        setFocus(Qt::MouseFocusReason);
    ToolbarButton::mousePressEvent(event);
}

void TextButton::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    const bool isProminent = m_style == TextButtonStyle::Prominent;
    const QRectF box(0, 0, frameSize().width, frameSize().height);
    const QPainterPath ground = continuousRoundedRect(box, toolbarlook::controlRadius);
    painter.fillPath(ground, isProminent ? theme.accent : theme.plainButton);
    painter.fillPath(ground, feedback(theme.text));
    if (!isProminent) {
        const double hairline = 1 / pixelsAPoint(painter);
        const QMarginsF half(hairline / 2, hairline / 2, hairline / 2, hairline / 2);
        painter.strokePath(
            continuousRoundedRect(box.marginsRemoved(half), toolbarlook::controlRadius),
            QPen(translucent(theme.text, toolbarlook::textButtonBorderOpacity), hairline));
    }
    drawTextInMiddle(painter, m_text, box, isProminent ? theme.onAccent : theme.text);
}

} // namespace lumacap
