#pragma once

#include "annotation/vocabulary/FrameBackgroundStyle.h"

#include <QImage>
#include <QString>

#include <optional>

namespace lumacap {

class RandomSource;

/// `base` as the content of a window on a decorative background, with `sourceAppName` as the
/// window's title. `scaleFactor` is the pixels of `base` for a point and of the answer as well; 0
/// stops the program, because a frame around it would be endless.
///
/// The answer has premultiplied alpha. Nothing when `base` is null, when the scale is negative or
/// when there is no memory for the bitmap.
std::optional<QImage> renderFramedImage(const QImage &base,
                                        const std::optional<QString> &sourceAppName,
                                        FrameBackgroundStyle backgroundStyle, int scaleFactor,
                                        RandomSource &random);

} // namespace lumacap
