#pragma once

#include "platform/pixels/PixelFormat.h"

#include <cstdint>
#include <optional>

namespace lumacap::wlroots {

/// What `format` of wl_shm means; nothing for one this program can't read.
std::optional<PixelFormat> pixelFormatOf(std::uint32_t format);

} // namespace lumacap::wlroots
