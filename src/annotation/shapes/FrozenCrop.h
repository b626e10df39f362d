#pragma once

#include "graphics/Geometry.h"

#include <QImage>

namespace lumacap {

/// The part of `frozenImage` that lies under `area`, widened to whole pixels and cut at the
/// picture's edges: null when nothing is left. It borrows the pixels of `frozenImage`, which
/// outlives it.
QImage cropUnder(const Rect<Canvas> &area, const QImage &frozenImage, double scaleFactor);

} // namespace lumacap
