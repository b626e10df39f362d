#include "platform/wlroots/Upright.h"

#include <QTransform>

#include <wayland-client-protocol.h>

namespace lumacap::wlroots {

namespace {

// The numbers are bits: quarter turns, and whether the picture was mirrored before.
constexpr std::int32_t quarterTurns = WL_OUTPUT_TRANSFORM_270;
constexpr std::int32_t isMirrored = WL_OUTPUT_TRANSFORM_FLIPPED;

} // namespace

QImage upright(QImage scannedOut, std::int32_t transform)
{
    const int turns = transform & quarterTurns;
    // The compositor turned it counter-clockwise, and the toolkit turns clockwise.
    QImage picture = turns == 0 ? std::move(scannedOut)
                                : scannedOut.transformed(QTransform().rotate(turns * 90));
    if ((transform & isMirrored) != 0)
        picture.mirror(true, false);
    return picture;
}

} // namespace lumacap::wlroots
