#include "annotation/toolbar/StripPainting.h"

#include "annotation/toolbar/Backdrop.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/ToolbarTheme.h"
#include "graphics/ColorMixing.h"
#include "graphics/PainterState.h"
#include "graphics/PointPainting.h"

#include <QBrush>
#include <QPainter>
#include <QPen>

namespace lumacap {
namespace {

QPainterPath inwards(const QRectF &box, double distance)
{
    return continuousRoundedRect(box.marginsRemoved({distance, distance, distance, distance}),
                                 toolbarlook::stripRadius - distance);
}

void paintMaterial(QPainter &painter, const QRectF &box, Backdrop &backdrop, const QColor &tint)
{
    const double pixels = pixelsAPoint(painter);
    const QImage &material = backdrop.material((box.size() * pixels).toSize(), tint);
    QBrush brush(material);
    brush.setTransform(
        QTransform::fromTranslate(box.left(), box.top()).scale(1 / pixels, 1 / pixels));
    painter.fillPath(inwards(box, 0), brush);
}

/// Two hairlines, one dark and one light: one of them shows over any screen.
void paintBorder(QPainter &painter, const QRectF &box, const ToolbarTheme &theme)
{
    const double hairline = 1 / pixelsAPoint(painter);
    painter.strokePath(inwards(box, hairline / 2), QPen(theme.outerEdge, hairline));
    painter.strokePath(inwards(box, hairline * 3 / 2), QPen(theme.innerEdge, hairline));
}

} // namespace

void paintStrip(QPainter &painter, const QRect &strip, double unitsAPoint,
                const std::vector<QRectF> &dividers, Backdrop &backdrop, const ToolbarTheme &theme)
{
    const PainterState state(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(unitsAPoint, unitsAPoint);
    const QRectF box = alignedToPixels(
        painter, {QPointF(strip.topLeft()) / unitsAPoint, QSizeF(strip.size()) / unitsAPoint});
    paintMaterial(painter, box, backdrop, theme.ground);
    paintBorder(painter, box, theme);
    for (const QRectF &divider : dividers)
        painter.fillRect(alignedToPixels(painter, divider),
                         translucent(theme.text, toolbarlook::dividerOpacity));
}

} // namespace lumacap
