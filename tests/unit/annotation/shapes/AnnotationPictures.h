#pragma once

#include "annotation/shapes/Annotation.h"

#include <QImage>

#include <functional>
#include <memory>
#include <vector>

class QPainter;

namespace lumacap::tests {

/// A transparent picture of `size` canvas points at `scale`, on which `paint` has drawn in canvas
/// space.
QImage painted(QSize size, int scale, const std::function<void(QPainter &)> &paint);

/// `annotation` as it looks on a canvas of `size` points while nothing lies beneath it.
QImage live(const Annotation &annotation, QSize size, int scale = 1);

/// `annotation` as it looks in the final picture over `screen`, `scale` pixels a point.
QImage finished(const Annotation &annotation, const QImage &screen, int scale = 1);

/// An opaque screen of which no two pixels are alike, up to 4096 each way.
QImage screenOfDistinctPixels(QSize pixels);

/// The smallest rectangle around everything that is not transparent; empty when all is.
QRect inkBounds(const QImage &picture);

/// The colour and opacity of the pixel, unpremultiplied.
QColor colorAt(const QImage &picture, int x, int y);

/// One annotation of each of the eight kinds with `rect` as its rectangle or two points.
std::vector<std::unique_ptr<Annotation>> oneOfEachKind(const Rect<Canvas> &rect);

/// One of each kind that has a rectangle.
std::vector<std::unique_ptr<Annotation>> oneOfEachRectangularKind(const Rect<Canvas> &rect);

} // namespace lumacap::tests
