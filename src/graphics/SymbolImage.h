#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace lumacap {

/// The drawing `symbols/<name>.svg`, all in `color`, on a transparent square with sides of
/// `points`, at `pixelsAPoint` device pixels a point (sides of whole pixels; the image's device
/// pixel ratio is set). A null image for a name that has no drawing. On the main thread only.
QImage symbolImage(const QString &name, double points, double pixelsAPoint, const QColor &color);

} // namespace lumacap
