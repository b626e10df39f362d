#pragma once

#include <QImage>

#include <cstdint>

namespace lumacap::wlroots {

/// The picture of an output as the person sees it. `scannedOut` is what the compositor sends to the
/// output, turned by `transform`, a number of wl_output. Pixels move and never change.
QImage upright(QImage scannedOut, std::int32_t transform);

} // namespace lumacap::wlroots
