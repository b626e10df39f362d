#pragma once

#include "graphics/Rgb.h"

class QImage;

namespace lumacap {

/// The mean colour of a picture shrunk to 20 × 20 pixels, with the outermost ones weighing three
/// times as much: a frame's background has to suit what surrounds the content. A transparent pixel
/// counts as black; a null image is medium grey.
Rgb extractDominantColor(const QImage &image);

} // namespace lumacap
