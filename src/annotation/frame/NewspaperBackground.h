#pragma once

#include "graphics/Geometry.h"

#include <QRect>

class QImage;

namespace lumacap {

class RandomSource;

/// Fills a picture that shows a canvas of `size` points, at `scale` pixels a point, with a made-up
/// page of newsprint, another one for other random numbers. The part of the page that lies in
/// `hidden` (pixels) may be left out, though its random numbers are drawn all the same.
///
/// On a page so narrow that a headline has no room (a column under 50 points), one that is tossed
/// for all the same asks for an empty range of random numbers, which stops the program.
void drawNewspaperBackground(QImage &picture, Size size, double scale, RandomSource &random,
                             const QRect &hidden);

} // namespace lumacap
