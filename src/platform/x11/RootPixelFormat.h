#pragma once

#include "platform/pixels/PixelFormat.h"

#include <QtGlobal>

#include <optional>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// The format of pictures of the root window; nothing for one this program can't read.
std::optional<PixelFormat> rootPixelFormat(const xcb::Connection &connection);

/// How long a row of the server's pictures is: padded to whole 32-bit words.
qsizetype bytesPerLine(const PixelFormat &format, int width);

} // namespace lumacap::x11
