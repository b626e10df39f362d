#pragma once

class QColor;
class QPainter;
class QRectF;

namespace lumacap {

struct PrefsTheme;

/// Strokes the rounded rectangle of `radius` with a line that lies within it.
void strokeInside(QPainter &painter, const QRectF &rect, double radius, double width,
                  const QColor &color);

/// Paints the ground of a bordered button; `feedback` is laid over it.
void paintBorderedGround(QPainter &painter, const QRectF &rect, double radius,
                         const QColor &feedback, const PrefsTheme &theme);

} // namespace lumacap
