#pragma once

#include "platform/Result.h"
#include "platform/ScreenCapture.h"
#include "platform/wayland/Output.h"

#include <QImage>
#include <QRect>
#include <QSize>

#include <vector>

namespace lumacap::portal {

/// Where one display lies in a picture of all displays.
struct DisplayCut {
    QRect area; ///< Of the picture.
    int enlargement = 1; ///< How often each of the display's pixels is repeated, both ways.

    friend bool operator==(const DisplayCut &, const DisplayCut &) = default;
};

/// Finds `display` in a picture of all `outputs` that is `picture` large. The picture has one scale
/// for all displays, the greatest of theirs as a rule. Fails where the display's own pixels can't
/// be in it: a display whose scale it does not have, or a whole fraction of, was resampled.
Result<DisplayCut> cutOf(DisplayId display, const std::vector<wayland::Output> &outputs,
                         QSize picture);

/// The display's own pixels, `Format_ARGB32_Premultiplied`, opaque. Fails where the picture was
/// enlarged by mixing pixels instead of repeating them.
Result<QImage> cutOut(const QImage &picture, const DisplayCut &cut);

} // namespace lumacap::portal
