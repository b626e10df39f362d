#pragma once

#include "overlay/OverlayScene.h"

#include <QImage>

namespace lumacap {

/// `frozenImage`, opaque, under the veil that lies over the whole screen.
QImage dimmed(const QImage &frozenImage);

/// Draws those pixels of `scene` that lie in `pixels` into `target`. All three pictures are of the
/// canvas in device pixels; `dimmedImage` is `dimmed(frozenImage)`. What is drawn in parts is,
/// pixel for pixel, what is drawn at once.
void paintOverlay(QImage &target, const QImage &frozenImage, const QImage &dimmedImage,
                  const OverlayScene &scene, const CanvasMeasure &canvas, const QRegion &pixels);

} // namespace lumacap
