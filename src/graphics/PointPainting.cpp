#include "graphics/PointPainting.h"

#include "graphics/PainterState.h"
#include "graphics/SymbolImage.h"
#include "graphics/Text.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

/// Each corner is one cubic curve whose inner points lie this share of its length before the
/// corner. At 0 the curvature would begin with nothing, but the corner would take up twice the
/// radius and more; a circle's arc would need 0.45.
constexpr double innerShare = 0.15;

/// The length of such a corner in radii, so that its middle is that of the circle: the middle of
/// the curve is (1 + 3 share) / 8 of its length from both edges, the circle's 1 - √½ radii.
const double cornerLength = 8 * (1 - std::sqrt(0.5)) / (1 + 3 * innerShare);

void drawText(QPainter &painter, const Text &text, QPointF upperLeft, const QColor &color)
{
    const PainterState state(painter);
    painter.translate(upperLeft.x(), upperLeft.y() + text.size().height);
    alignToPixels(painter);
    painter.scale(1, -1); // texts are drawn with y up
    text.draw(painter, {0, 0}, color);
}

} // namespace

QPainterPath continuousRoundedRect(const QRectF &rect, double radius)
{
    const double length = std::min({radius * cornerLength, rect.width() / 2, rect.height() / 2});
    const double inner = length * innerShare;
    QPainterPath path;
    // From `start` to `end` round `corner`, all three on the rectangle's edges.
    const auto turn = [&](QPointF start, QPointF corner, QPointF end) {
        const double share = inner / length;
        path.lineTo(start);
        path.cubicTo(corner + (start - corner) * share, corner + (end - corner) * share, end);
    };
    if (!(length > 0)) {
        path.addRect(rect);
        return path;
    }
    const QPointF along(length, 0);
    const QPointF down(0, length);
    path.moveTo(rect.topLeft() + along);
    turn(rect.topRight() - along, rect.topRight(), rect.topRight() + down);
    turn(rect.bottomRight() - down, rect.bottomRight(), rect.bottomRight() - along);
    turn(rect.bottomLeft() + along, rect.bottomLeft(), rect.bottomLeft() - down);
    turn(rect.topLeft() + down, rect.topLeft(), rect.topLeft() + along);
    path.closeSubpath();
    return path;
}

double pixelsAPoint(const QPainter &painter)
{
    return std::abs(painter.deviceTransform().m11());
}

void alignToPixels(QPainter &painter)
{
    const QTransform toPixels = painter.deviceTransform();
    painter.translate((std::round(toPixels.dx()) - toPixels.dx()) / toPixels.m11(),
                      (std::round(toPixels.dy()) - toPixels.dy()) / toPixels.m22());
}

QRectF alignedToPixels(const QPainter &painter, const QRectF &rect)
{
    const QTransform toPixels = painter.deviceTransform();
    const QRectF pixels = toPixels.mapRect(rect);
    const QPointF low(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF high(std::round(pixels.right()), std::round(pixels.bottom()));
    return toPixels.inverted().mapRect(QRectF(low, high));
}

void drawSymbol(QPainter &painter, const QString &name, const QRectF &rect, double side,
                const QColor &color)
{
    const QTransform toPixels = painter.deviceTransform();
    const QImage image = symbolImage(name, side, toPixels.m11(), color);
    const QPointF middle = toPixels.map(rect.center());
    const QPointF corner(std::round(middle.x() - image.width() / 2.0),
                         std::round(middle.y() - image.height() / 2.0));
    const QRectF pixels(corner, QSizeF(image.width(), image.height()));
    painter.drawImage(toPixels.inverted().mapRect(pixels), image, QRectF(image.rect()));
}

void drawTextInMiddle(QPainter &painter, const Text &text, const QRectF &rect, const QColor &color)
{
    const QPointF half(text.size().width / 2, text.size().height / 2);
    drawText(painter, text, rect.center() - half, color);
}

void drawTextAtLeft(QPainter &painter, const Text &text, const QRectF &rect, const QColor &color)
{
    drawText(painter, text, {rect.left(), rect.center().y() - text.size().height / 2}, color);
}

} // namespace lumacap
