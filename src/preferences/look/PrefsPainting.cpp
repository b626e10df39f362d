#include "preferences/look/PrefsPainting.h"

#include "graphics/PointPainting.h"
#include "preferences/look/PrefsTheme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace lumacap {

void strokeInside(QPainter &painter, const QRectF &rect, double radius, double width,
                  const QColor &color)
{
    const QMarginsF half(width / 2, width / 2, width / 2, width / 2);
    painter.strokePath(continuousRoundedRect(rect.marginsRemoved(half), radius - width / 2),
                       QPen(color, width));
}

void paintBorderedGround(QPainter &painter, const QRectF &rect, double radius,
                         const QColor &feedback, const PrefsTheme &theme)
{
    const QPainterPath ground = continuousRoundedRect(rect, radius);
    painter.fillPath(ground, theme.button);
    painter.fillPath(ground, feedback);
    strokeInside(painter, rect, radius, 1 / pixelsAPoint(painter), theme.buttonEdge);
}

} // namespace lumacap
