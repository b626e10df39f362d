#include "platform/wlroots/ShmFormat.h"

#include <QSysInfo>

#include <algorithm>
#include <array>

#include <wayland-client-protocol.h>

namespace lumacap::wlroots {

namespace {

struct FormatRow {
    std::uint32_t format;
    PixelFormat pixels;
};

constexpr PixelFormat blueFirst{QImage::Format_RGB32, 32, 0xff000000};
constexpr PixelFormat redFirst{QImage::Format_RGBX8888, 32, 0xff000000};
constexpr PixelFormat thirtyBits{QImage::Format_RGB30, 32, 0xc0000000};
constexpr PixelFormat thirtyBitsRedFirst{QImage::Format_BGR30, 32, 0xc0000000};

// What is on a screen hides nothing behind it: alpha is one more unused byte. The names of wl_shm
// read from the highest bits to the lowest, which come first in memory.
constexpr std::array formatRows{
    FormatRow{WL_SHM_FORMAT_XRGB8888, blueFirst},
    FormatRow{WL_SHM_FORMAT_ARGB8888, blueFirst},
    FormatRow{WL_SHM_FORMAT_XBGR8888, redFirst},
    FormatRow{WL_SHM_FORMAT_ABGR8888, redFirst},
    FormatRow{WL_SHM_FORMAT_XRGB2101010, thirtyBits},
    FormatRow{WL_SHM_FORMAT_ARGB2101010, thirtyBits},
    FormatRow{WL_SHM_FORMAT_XBGR2101010, thirtyBitsRedFirst},
    FormatRow{WL_SHM_FORMAT_ABGR2101010, thirtyBitsRedFirst},
    FormatRow{WL_SHM_FORMAT_RGB888, {QImage::Format_BGR888, 24, 0}},
    FormatRow{WL_SHM_FORMAT_BGR888, {QImage::Format_RGB888, 24, 0}},
    FormatRow{WL_SHM_FORMAT_RGB565, {QImage::Format_RGB16, 16, 0}},
};

} // namespace

std::optional<PixelFormat> pixelFormatOf(std::uint32_t format)
{
    // The formats are of little-endian words, and the toolkit's of the host's.
    if (QSysInfo::ByteOrder != QSysInfo::LittleEndian)
        return std::nullopt;
    const auto *const row = std::ranges::find(formatRows, format, &FormatRow::format);
    return row == formatRows.end() ? std::nullopt : std::optional(row->pixels);
}

} // namespace lumacap::wlroots
