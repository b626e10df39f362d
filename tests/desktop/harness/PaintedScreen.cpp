#include "harness/PaintedScreen.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

#include <xcb/render.h>
#include <xcb/xcb.h>

namespace lumacap::harness {

namespace {

/// A pixel as the server stores it. In depth 30 the channel's top bits are repeated below, so that
/// it means the same level whether a reader cuts or rounds to eight bits.
std::uint32_t packed(QRgb pixel, int depth)
{
    if (depth == 24)
        return pixel & 0xffffffU;
    const auto channel = [](int level) {
        return (static_cast<std::uint32_t>(level) << 2U)
            | (static_cast<std::uint32_t>(level) >> 6U);
    };
    return channel(qRed(pixel)) << 20U | channel(qGreen(pixel)) << 10U | channel(qBlue(pixel));
}

/// Puts 32-bit rows into `drawable` from its top, in pieces the server takes.
void putRows(const XConnection &connection, std::uint32_t drawable, const QSize &size, int depth,
             std::span<const std::uint32_t> pixels)
{
    xcb_connection_t *const raw = connection.raw();
    const std::uint32_t context = xcb_generate_id(raw);
    xcb_create_gc(raw, context, drawable, 0, nullptr);
    constexpr std::uint32_t bytesAtOnce = 200'000;
    const auto width = static_cast<std::uint32_t>(size.width());
    const int rowsAtOnce = std::max(1, static_cast<int>(bytesAtOnce / (4 * width)));
    for (int y = 0; y < size.height(); y += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, size.height() - y);
        const std::size_t first = static_cast<std::size_t>(y) * width;
        xcb_put_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context,
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(y), 0, static_cast<std::uint8_t>(depth),
                      static_cast<std::uint32_t>(rows) * width * 4,
                      reinterpret_cast<const std::uint8_t *>(pixels.data() + first));
    }
    xcb_free_gc(raw, context);
}

xcb_render_pictformat_t premultipliedFormat(xcb_connection_t *raw)
{
    const XReply<xcb_render_query_pict_formats_reply_t> formats(
        xcb_render_query_pict_formats_reply(raw, xcb_render_query_pict_formats(raw), nullptr));
    if (!formats)
        throw std::runtime_error("the server can't draw pictures");
    const std::span list(xcb_render_query_pict_formats_formats(formats.get()),
                         formats->num_formats);
    const auto found = std::ranges::find_if(list, [](const auto &format) {
        return format.depth == 32 && format.direct.alpha_shift == 24
            && format.direct.red_shift == 16 && format.direct.green_shift == 8
            && format.direct.blue_shift == 0;
    });
    if (found == list.end())
        throw std::runtime_error("the server has no pictures with transparency");
    return found->id;
}

} // namespace

PaintedScreen::PaintedScreen(const QByteArray &display, const QImage &picture, Cursor cursor)
    : m_connection(display)
    , m_cursor(std::move(cursor))
{
    xcb_connection_t *const raw = m_connection.raw();
    m_window = xcb_generate_id(raw);
    const std::uint32_t overrideRedirect = 1;
    const QSize size = m_connection.size();
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                      static_cast<std::uint16_t>(size.width()),
                      static_cast<std::uint16_t>(size.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    shapePointer();
    paint(picture);
    xcb_map_window(raw, m_window);
    placePointer({size.width() / 2, size.height() / 2});
}

void PaintedScreen::paint(const QImage &picture)
{
    const std::uint32_t pixmap = pixmapOf(picture);
    xcb_connection_t *const raw = m_connection.raw();
    xcb_change_window_attributes(raw, m_window, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(raw, 0, m_window, 0, 0, 0, 0);
    xcb_free_pixmap(raw, pixmap);
    m_connection.finish();
    m_picture = picture;
}

void PaintedScreen::lower()
{
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(m_connection.raw(), m_window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    m_connection.finish();
}

void PaintedScreen::placePointer(const QPoint &position)
{
    xcb_warp_pointer(m_connection.raw(), 0, m_connection.root(), 0, 0, 0, 0,
                     static_cast<std::int16_t>(position.x()),
                     static_cast<std::int16_t>(position.y()));
    m_connection.finish();
    m_pointer = position;
}

QImage PaintedScreen::expected(const QRect &area) const
{
    return expectedStill(m_picture, area, m_cursor, m_pointer);
}

QImage PaintedScreen::expected() const
{
    return expected(m_picture.rect());
}

std::uint32_t PaintedScreen::pixmapOf(const QImage &picture) const
{
    const int depth = m_connection.screen().root_depth;
    if (picture.size() != m_connection.size() || (depth != 24 && depth != 30))
        throw std::runtime_error("the picture does not fit the screen");
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(picture.width())
                   * static_cast<std::size_t>(picture.height()));
    for (int y = 0; y < picture.height(); ++y) {
        const std::span row(reinterpret_cast<const QRgb *>(picture.constScanLine(y)),
                            static_cast<std::size_t>(picture.width()));
        for (const QRgb pixel : row)
            pixels.push_back(packed(pixel, depth));
    }
    xcb_connection_t *const raw = m_connection.raw();
    const std::uint32_t pixmap = xcb_generate_id(raw);
    xcb_create_pixmap(raw, static_cast<std::uint8_t>(depth), pixmap, m_connection.root(),
                      static_cast<std::uint16_t>(picture.width()),
                      static_cast<std::uint16_t>(picture.height()));
    putRows(m_connection, pixmap, picture.size(), depth, pixels);
    return pixmap;
}

void PaintedScreen::shapePointer() const
{
    xcb_connection_t *const raw = m_connection.raw();
    const QImage &image = m_cursor.image;
    const std::uint32_t pixmap = xcb_generate_id(raw);
    const std::uint32_t drawn = xcb_generate_id(raw);
    const std::uint32_t cursor = xcb_generate_id(raw);
    xcb_create_pixmap(raw, 32, pixmap, m_connection.root(),
                      static_cast<std::uint16_t>(image.width()),
                      static_cast<std::uint16_t>(image.height()));
    putRows(m_connection, pixmap, image.size(), 32,
            {reinterpret_cast<const std::uint32_t *>(image.constBits()),
             static_cast<std::size_t>(image.sizeInBytes()) / 4});
    xcb_render_create_picture(raw, drawn, pixmap, premultipliedFormat(raw), 0, nullptr);
    xcb_render_create_cursor(raw, cursor, drawn, static_cast<std::uint16_t>(m_cursor.hotSpot.x()),
                             static_cast<std::uint16_t>(m_cursor.hotSpot.y()));
    xcb_change_window_attributes(raw, m_window, XCB_CW_CURSOR, &cursor);
    xcb_free_cursor(raw, cursor);
    xcb_render_free_picture(raw, drawn);
    xcb_free_pixmap(raw, pixmap);
}

} // namespace lumacap::harness
