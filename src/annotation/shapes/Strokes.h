#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace lumacap {

/// The pen of plain outlines: butt caps and mitred corners. `width` in canvas points.
inline QPen outlinePen(const QColor &color, double width)
{
    return {color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

/// Strokes `line` by filling the outline of its stroke. A painter draws straight lines by a way of
/// its own whose pixels depend a little on the clip, and a part drawn anew must fit what is there.
inline void strokeLine(QPainter &painter, const QPainterPath &line, const QPen &pen)
{
    QPainterPath outline = QPainterPathStroker(pen).createStroke(line);
    if (line.elementCount() == 1 && pen.capStyle() == Qt::RoundCap) // a path drops repeated points
        outline.addEllipse(line.currentPosition(), pen.widthF() / 2, pen.widthF() / 2);
    painter.fillPath(outline, pen.brush());
}

/// `color` at this alpha, whatever its own.
inline QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

} // namespace lumacap
