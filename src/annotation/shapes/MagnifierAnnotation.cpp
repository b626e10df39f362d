#include "annotation/shapes/MagnifierAnnotation.h"

#include "annotation/shapes/Enlargement.h"
#include "annotation/shapes/FrozenCrop.h"
#include "annotation/shapes/LoupeGeometry.h"
#include "annotation/shapes/Strokes.h"
#include "annotation/vocabulary/MagnifierZoom.h"
#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"
#include "graphics/Text.h"

#include <QImage>
#include <QLineF>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr double leastSide = 4; // of a source or a loupe worth drawing
constexpr double sourceStroke = 1.5;
constexpr double sourceAlpha = 0.5;
constexpr double loupeExtraStroke = 1;
constexpr double connectorShare = 0.5; // of the stroke's width
constexpr double leastConnector = 1.5;
constexpr double connectorAlpha = 0.7;
constexpr double dash = 6;
constexpr double gap = 4;
constexpr double badgeFontSize = 10;
constexpr double badgeAlpha = 0.6;
constexpr double badgeRightMargin = 8; // from the loupe's edge to the text's end
constexpr double badgeBottomMargin = 4;
constexpr double badgePaddingX = 3; // around the text, on each side
constexpr double badgePaddingY = 1;
} // namespace look

/// The dashes of the line from `start` to `end`, as far as any screen reaches: a dashed pen would
/// go on for ever, and begin elsewhere with every clip.
QPainterPath dashes(QPointF start, QPointF end)
{
    constexpr double longestLine = 1e5; // beyond any screen
    const QLineF line(start, end);
    QPainterPath path;
    for (double at = 0; at < std::min(line.length(), longestLine); at += look::dash + look::gap) {
        path.moveTo(line.pointAt(at / line.length()));
        path.lineTo(line.pointAt(std::min(1.0, (at + look::dash) / line.length())));
    }
    return path;
}

bool exceedsLeastSide(const Rect<Canvas> &rect)
{
    return isFinite(rect) && rect.width() > look::leastSide && rect.height() > look::leastSide;
}

} // namespace

MagnifierAnnotation::MagnifierAnnotation(const QColor &strokeColor, double strokeWidth,
                                         const Rect<Canvas> &enlarged, double factor,
                                         MagnifierShape outline)
    : Annotation(strokeColor, strokeWidth)
    , sourceOrigin(enlarged.origin)
    , sourceSize(enlarged.size)
    , zoomFactor(factor)
    , shape(outline)
{
}

void MagnifierAnnotation::autoPlaceLoupe(const Rect<Canvas> &canvasBounds)
{
    const Rect<Canvas> placed = placedLoupe(source(), zoomFactor, canvasBounds);
    loupeOrigin = placed.origin;
    loupeSize = placed.size;
}

void MagnifierAnnotation::draw(QPainter &context, const Rect<Canvas> & /*canvasBounds*/) const
{
    if (!hasSource())
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    strokeSource(context);
    if (!hasLoupe())
        return;
    strokeLoupe(context);
    drawConnector(context);
}

void MagnifierAnnotation::drawWithImage(QPainter &context, const Rect<Canvas> &canvasBounds,
                                        const QImage &frozenImage, double scaleFactor) const
{
    if (!hasSource())
        return;
    const QImage crop = cropUnder(source(), frozenImage, scaleFactor);
    if (!hasLoupe() || crop.isNull())
        return draw(context, canvasBounds); // which stops at the source where there is no loupe
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    strokeSource(context);
    drawConnector(context);
    drawEnlarged(context, loupe(), loupeOutline(loupe(), shape), crop);
    strokeLoupe(context);
    drawZoomBadge(context);
}

DrawnAreas MagnifierAnnotation::drawnAreas() const
{
    if (!hasSource())
        return {};
    DrawnAreas around = areasAround(source(), look::sourceStroke / 2);
    if (!hasLoupe())
        return around;
    DrawnAreas areas = joined(std::move(around), areasAlong(connector(), connectorWidth() / 2));
    areas.push_back(loupe().inset(-lineWidth - look::loupeExtraStroke));
    areas.push_back(badgeBehind(zoomText()).inset(-look::badgePaddingX));
    return areas;
}

bool MagnifierAnnotation::hasSource() const
{
    return exceedsLeastSide(source()) && hasStroke();
}

bool MagnifierAnnotation::hasLoupe() const
{
    return exceedsLeastSide(loupe());
}

void MagnifierAnnotation::strokeSource(QPainter &context) const
{
    const PainterState state(context);
    context.setPen(outlinePen(withAlpha(color, look::sourceAlpha), look::sourceStroke));
    context.setBrush(Qt::NoBrush);
    context.drawRect(toQRectF(source()));
}

void MagnifierAnnotation::strokeLoupe(QPainter &context) const
{
    const PainterState state(context);
    context.setPen(outlinePen(color, lineWidth + look::loupeExtraStroke));
    context.setBrush(Qt::NoBrush);
    context.drawPath(loupeOutline(loupe(), shape));
}

std::array<Point<Canvas>, 2> MagnifierAnnotation::connector() const
{
    return {nearestEdgePoint(source(), loupe().center()),
            nearestEdgePoint(loupe(), source().center())};
}

double MagnifierAnnotation::connectorWidth() const
{
    return std::max(lineWidth * look::connectorShare, look::leastConnector);
}

void MagnifierAnnotation::drawConnector(QPainter &context) const
{
    const PainterState state(context);
    const auto [start, end] = connector();
    strokeLine(context, dashes(toQPointF(start), toQPointF(end)),
               outlinePen(withAlpha(color, look::connectorAlpha), connectorWidth()));
}

Text MagnifierAnnotation::zoomText() const
{
    return {zoomLabel(zoomFactor), look::badgeFontSize, FontWeight::Bold};
}

Rect<Canvas> MagnifierAnnotation::badgeBehind(const Text &text) const
{
    const auto [width, height] = text.size();
    const Rect<Canvas> place = loupe();
    return {{place.maxX() - width - look::badgeRightMargin, place.minY() + look::badgeBottomMargin},
            {width + 2 * look::badgePaddingX, height + 2 * look::badgePaddingY}};
}

void MagnifierAnnotation::drawZoomBadge(QPainter &context) const
{
    const Text text = zoomText();
    const Rect<Canvas> badge = badgeBehind(text);
    fillRects(context, std::span(&badge, 1), withAlpha(Qt::black, look::badgeAlpha));
    text.draw(context, {badge.minX() + look::badgePaddingX, badge.minY() + look::badgePaddingY},
              Qt::white);
}

} // namespace lumacap
