#pragma once

#include "platform/Result.h"
#include "platform/pixels/PixelFormat.h"

#include <QSize>
#include <QVariantMap>

namespace lumacap::kwin {

/// How the bytes of a picture lie that KWin is about to send.
struct PictureLayout {
    QSize size;
    qsizetype bytesPerLine = 0;
    PixelFormat pixels;

    qsizetype bytes() const { return bytesPerLine * size.height(); }

    friend bool operator==(const PictureLayout &, const PictureLayout &) = default;
};

/// What KWin's reply says of the picture; a failure for one that no picture can have.
Result<PictureLayout> pictureLayout(const QVariantMap &reply);

} // namespace lumacap::kwin
