#include "platform/x11/RootPixelFormat.h"

#include "platform/xcb/Connection.h"

#include <QSysInfo>

#include <algorithm>
#include <array>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

struct FormatRow {
    std::uint8_t depth;
    std::uint32_t redMask;
    PixelFormat pixels;
};

constexpr std::array formatRows{
    FormatRow{24, 0xff0000, {QImage::Format_RGB32, 32, 0xff000000}},
    FormatRow{32, 0xff0000, {QImage::Format_RGB32, 32, 0xff000000}},
    FormatRow{24, 0x0000ff, {QImage::Format_RGBX8888, 32, 0xff000000}},
    FormatRow{30, 0x3ff00000, {QImage::Format_RGB30, 32, 0xc0000000}},
    FormatRow{30, 0x000003ff, {QImage::Format_BGR30, 32, 0xc0000000}},
    FormatRow{16, 0xf800, {QImage::Format_RGB16, 16, 0}},
    FormatRow{15, 0x7c00, {QImage::Format_RGB555, 16, 0}},
};

std::uint32_t redMaskOf(const xcb_screen_t &screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
             xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == screen.root_visual)
                return visual.data->red_mask;
        }
    }
    return 0;
}

std::uint8_t bitsPerPixel(const xcb_setup_t *setup, std::uint8_t depth)
{
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0;
         xcb_format_next(&format)) {
        if (format.data->depth == depth)
            return format.data->bits_per_pixel;
    }
    return 0;
}

} // namespace

qsizetype bytesPerLine(const PixelFormat &format, int width)
{
    return (qsizetype{width} * format.bitsPerPixel + 31) / 32 * 4;
}

std::optional<PixelFormat> rootPixelFormat(const xcb::Connection &connection)
{
    const xcb_setup_t *const setup = xcb_get_setup(connection.raw());
    const xcb_screen_t &screen = connection.screen();
    const auto hostOrder = QSysInfo::ByteOrder == QSysInfo::LittleEndian
        ? XCB_IMAGE_ORDER_LSB_FIRST
        : XCB_IMAGE_ORDER_MSB_FIRST;
    if (setup->image_byte_order != hostOrder)
        return std::nullopt;
    const auto red = redMaskOf(screen);
    const auto bits = bitsPerPixel(setup, screen.root_depth);
    const auto *const row = std::ranges::find_if(formatRows, [&](const FormatRow &candidate) {
        return candidate.depth == screen.root_depth && candidate.redMask == red
            && candidate.pixels.bitsPerPixel == bits;
    });
    return row == formatRows.end() ? std::nullopt : std::optional(row->pixels);
}

} // namespace lumacap::x11
