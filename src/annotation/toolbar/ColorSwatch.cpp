#include "annotation/toolbar/ColorSwatch.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace lumacap {
namespace {

constexpr QRgb grey = qRgb(142, 142, 147);

QPainterPath circle(double outset)
{
    const double side = toolbarlook::swatchSide + 2 * outset;
    QPainterPath path;
    path.addEllipse(-outset, -outset, side, side);
    return path;
}

} // namespace

ColorSwatch::ColorSwatch(AnnotationColor color, QWidget *parent)
    : ToolbarButton(QAccessible::RadioButton, rowOf(annotationColors, color).rawValue, parent)
    , m_color(color)
{
    setCheckable(true);
}

Size ColorSwatch::frameSize() const
{
    return {toolbarlook::swatchSide, toolbarlook::swatchSide};
}

QMarginsF ColorSwatch::reach() const
{
    using toolbarlook::swatchReach;
    const double upAndDown = (toolbarlook::iconButtonSide - toolbarlook::swatchSide) / 2;
    return {swatchReach, upAndDown, swatchReach, upAndDown};
}

QPainterPath ColorSwatch::focusRing() const
{
    // A square: a third circle would look like the second one grown.
    using toolbarlook::swatchFocusRingOutset;
    const double side = toolbarlook::swatchSide + 2 * swatchFocusRingOutset;
    return continuousRoundedRect({-swatchFocusRingOutset, -swatchFocusRingOutset, side, side},
                                 toolbarlook::controlRadius);
}

double ColorSwatch::focusRingWidth() const
{
    return toolbarlook::swatchFocusRingWidth;
}

void ColorSwatch::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    painter.fillPath(circle(0), nsColor(m_color));
    painter.fillPath(circle(0), feedback(theme.text));
    const QPainterPath outer = circle(toolbarlook::swatchOuterRingOutset);
    if (isChecked()) {
        painter.strokePath(circle(0), QPen(Qt::white, toolbarlook::swatchInnerRingWidth));
        painter.strokePath(outer, QPen(theme.accent, toolbarlook::swatchCurrentRingWidth));
        return;
    }
    const double opacity =
        underMouse() ? toolbarlook::swatchHoverRingOpacity : toolbarlook::swatchRingOpacity;
    painter.strokePath(
        outer, QPen(translucent(QColor::fromRgb(grey), opacity), toolbarlook::swatchRingWidth));
}

} // namespace lumacap
