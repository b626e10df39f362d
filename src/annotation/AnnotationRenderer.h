#pragma once

#include "annotation/shapes/Annotation.h"
#include "annotation/vocabulary/FrameBackgroundStyle.h"

#include <QImage>
#include <QString>

#include <memory>
#include <optional>
#include <span>

namespace lumacap {

/// Turns a finished capture into pictures, premultiplied ARGB with the first row at the top. An
/// operation that can't make its picture, because a side is below one pixel or memory is short,
/// gives none; a side that is no number breaks the program's own rules and ends it.
class AnnotationRenderer {
public:
    /// The selected part of `frozenImage` (device pixels of the whole screen) with the annotations
    /// burnt in, at the image's own resolution. `selectionViewRect` none is the whole screen, which
    /// is `screenSize` points; `scaleFactor` device pixels make a point. The screen's pixels enter
    /// whole: where the selection lies between two, the nearest first column and row begin it.
    static std::optional<QImage> renderFinalImage(
        const QImage &frozenImage, const std::optional<Rect<Canvas>> &selectionViewRect,
        std::span<const std::unique_ptr<Annotation>> annotations, Size screenSize, int scaleFactor);

    /// `base` as a window with a title bar on a decorative background, `scaleFactor` pixels a
    /// point. The newspaper page is another at every call.
    static std::optional<QImage> renderFramedImage(const QImage &base,
                                                   const std::optional<QString> &sourceAppName,
                                                   FrameBackgroundStyle backgroundStyle,
                                                   int scaleFactor);
};

} // namespace lumacap
