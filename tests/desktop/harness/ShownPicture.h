#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>

namespace lumacap::harness {

/// What the server of `display` has on `area` (root pixels) of its screen, of 24 bits, without the
/// pointer; on all of it for an empty area. Null when the area is not on the screen. Format_RGB32.
QImage shownOn(const QByteArray &display, const QRect &area = {});

} // namespace lumacap::harness
