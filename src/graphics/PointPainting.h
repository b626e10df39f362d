#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>

class QColor;
class QPainter;

namespace lumacap {

class Text;

// Every painter here is one whose units are points, y down, without rotation.

/// A rectangle whose edges run into its corners without a kink in their curvature; each corner
/// passes the middle of a circle's of `radius`.
QPainterPath continuousRoundedRect(const QRectF &rect, double radius);

/// How many device pixels make a point.
double pixelsAPoint(const QPainter &painter);

/// Moves the painter's origin to the nearest whole device pixel.
void alignToPixels(QPainter &painter);

/// The rectangle with all edges moved to the nearest whole device pixels.
QRectF alignedToPixels(const QPainter &painter, const QRectF &rect);

/// Draws the symbol of that name in the middle of `rect`, `side` points high and wide, pixel for
/// pixel.
void drawSymbol(QPainter &painter, const QString &name, const QRectF &rect, double side,
                const QColor &color);

/// Draws the text in the middle of `rect`.
void drawTextInMiddle(QPainter &painter, const Text &text, const QRectF &rect, const QColor &color);

/// Draws the text from the left edge of `rect`, halfway between its upper and its lower one.
void drawTextAtLeft(QPainter &painter, const Text &text, const QRectF &rect, const QColor &color);

} // namespace lumacap
