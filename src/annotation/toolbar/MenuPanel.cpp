#include "annotation/toolbar/MenuPanel.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/ToolbarTheme.h"
#include "graphics/ColorMixing.h"
#include "graphics/PainterState.h"
#include "graphics/PointPainting.h"

#include <QPainter>
#include <QPen>

namespace lumacap {
namespace {

QRectF outset(const QRectF &rect, double distance)
{
    return rect.marginsAdded({distance, distance, distance, distance});
}

/// Rectangles over one another, the widest first: each adds as little as makes a soft edge that
/// fades like a bell.
void paintShadow(QPainter &painter, const QRectF &panel)
{
    constexpr int steps = 16;
    const QRectF dropped = panel.translated(0, toolbarlook::shadowDrop);
    double shown = 0;
    for (int step = 1; step <= steps; ++step) {
        const double nearness = static_cast<double>(step) / steps;
        const double wanted = toolbarlook::shadowOpacity * nearness * nearness;
        const double added = (wanted - shown) / (1 - shown);
        const double distance = toolbarlook::shadowReach * (1 - nearness);
        painter.fillPath(
            continuousRoundedRect(outset(dropped, distance), toolbarlook::menuRadius + distance),
            translucent(Qt::black, added));
        shown = wanted;
    }
}

} // namespace

void paintMenuPanel(QPainter &painter, const QRect &panel, double unitsAPoint,
                    const ToolbarTheme &theme)
{
    const PainterState state(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(unitsAPoint, unitsAPoint);
    const QRectF points(QPointF(panel.topLeft()) / unitsAPoint, QSizeF(panel.size()) / unitsAPoint);
    const QRectF box = alignedToPixels(painter, points);
    const double hairline = 1 / pixelsAPoint(painter);
    paintShadow(painter, box);
    painter.fillPath(continuousRoundedRect(outset(box, hairline), toolbarlook::menuRadius),
                     theme.outerEdge);
    painter.fillPath(continuousRoundedRect(box, toolbarlook::menuRadius), theme.menuGround);
    painter.strokePath(continuousRoundedRect(outset(box, -hairline / 2), toolbarlook::menuRadius),
                       QPen(theme.innerEdge, hairline));
}

} // namespace lumacap
