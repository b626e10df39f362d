#include "annotation/toolbar/ToolbarButton.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/PointPainting.h"

#include <QPainter>
#include <QPen>

#include <cmath>

namespace lumacap {
namespace {

/// The smallest whole units around the rectangle, which may be off by what sums are off by.
QRect wholeUnitsAround(const QRectF &rect)
{
    constexpr double rounding = 1e-6;
    const QPoint low(static_cast<int>(std::floor(rect.left() + rounding)),
                     static_cast<int>(std::floor(rect.top() + rounding)));
    const QPoint high(static_cast<int>(std::ceil(rect.right() - rounding)),
                      static_cast<int>(std::ceil(rect.bottom() - rounding)));
    return {low, QSize(high.x() - low.x(), high.y() - low.y())};
}

} // namespace

void ToolbarButton::place(QPointF origin, double unitsAPoint)
{
    const Size size = frameSize();
    m_frame = QRectF(origin, QSizeF(size.width, size.height));
    m_unitsAPoint = unitsAPoint;
    const QRectF around = m_frame.marginsAdded(reach());
    const QRect units =
        wholeUnitsAround(QRectF(around.topLeft() * unitsAPoint, around.size() * unitsAPoint));
    m_origin = m_frame.topLeft() * unitsAPoint - QPointF(units.topLeft());
    setGeometry(units);
    update();
}

QMarginsF ToolbarButton::reach() const
{
    using toolbarlook::reach;
    const double upAndDown =
        std::max(reach, (toolbarlook::iconButtonSide - frameSize().height) / 2);
    return {reach, upAndDown, reach, upAndDown};
}

QPainterPath ToolbarButton::focusRing() const
{
    using toolbarlook::focusRingOutset;
    const QRectF around(0, 0, frameSize().width, frameSize().height);
    const QMarginsF outset(focusRingOutset, focusRingOutset, focusRingOutset, focusRingOutset);
    return continuousRoundedRect(around.marginsAdded(outset),
                                 toolbarlook::controlRadius + focusRingOutset);
}

double ToolbarButton::focusRingWidth() const
{
    return toolbarlook::focusRingWidth;
}

void ToolbarButton::paintEvent(QPaintEvent * /*event*/)
{
    const ToolbarTheme theme = themeOf(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(m_origin);
    alignToPixels(painter);
    painter.scale(m_unitsAPoint, m_unitsAPoint);
    if (showsFocus())
        painter.strokePath(focusRing(), QPen(theme.accent, focusRingWidth()));
    paintFace(painter, theme);
}

} // namespace lumacap
