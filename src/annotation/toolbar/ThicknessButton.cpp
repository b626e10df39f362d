#include "annotation/toolbar/ThicknessButton.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/PointPainting.h"

#include <QPainter>

namespace lumacap {

ThicknessButton::ThicknessButton(LineThickness thickness, const QString &name, QWidget *parent)
    : ToolbarButton(QAccessible::RadioButton, name, parent)
    , m_thickness(thickness)
{
    setCheckable(true);
}

Size ThicknessButton::frameSize() const
{
    return {toolbarlook::barWidth, rowOf(lineThicknesses, m_thickness).rawValue};
}

/// As high as the dividers, a little wider than the bar.
QPainterPath ThicknessButton::ground() const
{
    constexpr double outset = 3;
    const double height = toolbarlook::dividerHeight;
    const QRectF around(-outset, (frameSize().height - height) / 2,
                        toolbarlook::barWidth + 2 * outset, height);
    return continuousRoundedRect(around, toolbarlook::controlRadius);
}

QPainterPath ThicknessButton::focusRing() const
{
    return ground();
}

void ThicknessButton::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    painter.fillPath(ground(), feedback(theme.text));
    QPainterPath bar;
    bar.addRoundedRect(QRectF(0, 0, frameSize().width, frameSize().height), toolbarlook::barRadius,
                       toolbarlook::barRadius);
    painter.fillPath(bar, isChecked() ? theme.accent : theme.text);
}

} // namespace lumacap
