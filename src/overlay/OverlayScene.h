#pragma once

#include "annotation/shapes/Annotation.h"
#include "graphics/Geometry.h"
#include "overlay/OverlayLabel.h"

#include <QList>
#include <QRegion>
#include <QUuid>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumacap {

enum class GuideLines { Hidden, Shown };

/// Device pixels that a mark may draw on, in rectangles that may overlap.
using DrawnPixels = std::vector<QRect>;

/// A finished mark and where it draws. The mark itself is only looked at to draw it.
struct DrawnAnnotation {
    const Annotation *annotation = nullptr;
    QUuid id;
    DrawnPixels pixels;
};

/// The mark that is being drawn.
struct AnnotationInProgress {
    const Annotation *annotation = nullptr;
    QUuid id;
    DrawnPixels pixels;
    /// One more with every change of the mark.
    std::uint64_t revision = 0;
    /// Where it looks different than one revision before.
    DrawnPixels lastChange;
};

/// All that the overlay shows at one moment, over the frozen screen.
struct OverlayScene {
    /// What is left clear of the veil, with the crawling line around it.
    std::optional<Rect<Canvas>> outline = std::nullopt;
    double antsPhase = 0;
    std::optional<OverlayLabel> label = std::nullopt;
    std::optional<Point<Canvas>> pointer = std::nullopt;
    GuideLines guideLines = GuideLines::Hidden;
    /// In drawing order.
    QList<DrawnAnnotation> annotations = {};
    std::optional<AnnotationInProgress> inProgress = std::nullopt;
};

/// The canvas in points, and the device pixels a point.
struct CanvasMeasure {
    Size size;
    int scale = 1;
};

/// The device pixels that may look different in `after` than in `before`. What is drawn of `after`
/// there, and only there, over a picture of `before` makes a picture of `after`.
QRegion changedPixels(const OverlayScene &before, const OverlayScene &after,
                      const CanvasMeasure &canvas);

/// Every device pixel that `area` touches, on the screen or not.
QRect pixelsUnder(const Rect<Canvas> &area, const CanvasMeasure &canvas);
DrawnPixels drawnPixels(const DrawnAreas &areas, const CanvasMeasure &canvas);

/// The device pixels that `outline` leaves clear: whole ones, nearest to its edges.
QRect clearPixels(const Rect<Canvas> &outline, const CanvasMeasure &canvas);

/// The lengths of the pointer's cross and of the lines through it, in points.
namespace pointerlook {
inline constexpr double armStart = 4;
inline constexpr double armEnd = 12;
inline constexpr double outerWidth = 2.5;
inline constexpr double innerWidth = 1;
inline constexpr double guideWidth = 0.5;
inline constexpr double guideGap = 20;
} // namespace pointerlook

} // namespace lumacap
