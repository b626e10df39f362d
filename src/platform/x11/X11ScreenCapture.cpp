#include "platform/x11/X11ScreenCapture.h"

#include "platform/pixels/SharedImage.h"
#include "platform/x11/RootPixelFormat.h"
#include "platform/x11/ScreenChanges.h"
#include "platform/xcb/Connection.h"

#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <tuple>

#include <xcb/shm.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::x11 {

namespace {

constexpr std::uint32_t allPlanes = 0xffffffff;

// A panel takes its menu off the screen about when it tells what was chosen in it, the windows
// beneath paint themselves after that, and a compositor fades the menu out for a third of a second
// or more, in steps: nothing but the end of the drawing tells when all have done so. Where
// something always moves, a film say, it ends never.
constexpr auto menuIsClosed = 100ms;
constexpr auto restLasts = 150ms;
constexpr auto settledAnyway = 1s;

/// Paints the pointer as the server shows it, its hot spot at the pointer's place.
void paintPointer(QImage &picture, QPoint origin, xcb_xfixes_get_cursor_image_reply_t &pointer)
{
    const auto *const pixels =
        reinterpret_cast<const uchar *>(xcb_xfixes_get_cursor_image_cursor_image(&pointer));
    const QImage image(pixels, pointer.width, pointer.height, pointer.width * qsizetype{4},
                       QImage::Format_ARGB32_Premultiplied);
    const QPoint place(pointer.x - pointer.xhot, pointer.y - pointer.yhot);
    QPainter(&picture).drawImage(place - origin, image);
}

} // namespace

X11ScreenCapture::X11ScreenCapture(xcb::Connection &connection)
    : m_connection(connection)
{
}

QCoro::Task<Result<std::vector<DisplayInfo>>> X11ScreenCapture::displays()
{
    const auto monitors = co_await queryMonitors(m_connection);
    if (!monitors)
        co_return std::unexpected(monitors.error());
    std::vector<DisplayInfo> displays;
    for (const Monitor &monitor : *monitors) {
        const double factor = backingFactorOf(monitor.frame);
        displays.push_back(
            {monitor.id, monitor.frame.width() / factor, monitor.frame.height() / factor});
    }
    co_return displays;
}

QCoro::Task<> X11ScreenCapture::settle()
{
    const QDeadlineTimer deadline(settledAnyway);
    ScreenChanges changes(m_connection);
    co_await QCoro::sleepFor(menuIsClosed);
    std::ignore = co_await changes.any(); // the menu's own closing
    bool isMoving = true;
    while (isMoving && !deadline.hasExpired()) {
        co_await QCoro::sleepFor(restLasts);
        isMoving = co_await changes.any();
    }
}

QCoro::Task<Result<QImage>> X11ScreenCapture::grab(DisplayId display, QSize /*pixelSize*/)
{
    const auto monitors = co_await queryMonitors(m_connection);
    if (!monitors)
        co_return std::unexpected(monitors.error());
    const auto monitor = std::ranges::find(*monitors, display, &Monitor::id);
    if (monitor == monitors->end())
        co_return failure(u"the display has been unplugged"_s);
    const auto format = rootPixelFormat(m_connection);
    if (!format)
        co_return failure(u"the X server's pixels are of an unknown format"_s);
    co_return co_await rootPicture(monitor->frame, *format);
}

QCoro::Task<Result<QImage>> X11ScreenCapture::rootPicture(QRect frame, PixelFormat format)
{
    // Asked for together with the picture, so that the pointer is where it was at that moment.
    const auto pointerQuestion = m_connection.hasFixes()
        ? xcb_xfixes_get_cursor_image(m_connection.raw())
        : xcb_xfixes_get_cursor_image_cookie_t{};
    // A server behind a forwarded socket offers shared memory that it can't map: then the plain
    // way.
    Result<QImage> picture = failure(u"no shared memory"_s);
    if (m_connection.sharesMemory())
        picture = co_await sharedPicture(frame, format);
    if (!picture)
        picture = co_await sentPicture(frame, format);
    if (picture && picture->isNull())
        picture = failure(u"there is no memory for the picture"_s);
    if (!m_connection.hasFixes())
        co_return picture;
    const auto pointer =
        co_await m_connection.reply<xcb_xfixes_get_cursor_image_reply_t>(pointerQuestion);
    if (picture && pointer) // a server without a pointer has none to show
        paintPointer(*picture, frame.topLeft(), **pointer);
    co_return picture;
}

QCoro::Task<Result<QImage>> X11ScreenCapture::sharedPicture(QRect frame, PixelFormat format)
{
    auto *const raw = m_connection.raw();
    auto shared =
        SharedImage::create(frame.size(), format.format, bytesPerLine(format, frame.width()));
    if (!shared)
        co_return std::unexpected(shared.error());
    const xcb_shm_seg_t segment = xcb_generate_id(raw);
    xcb_shm_attach_fd(raw, segment, shared->takeDescriptor(), 0); // libxcb closes the descriptor
    const auto question = xcb_shm_get_image(
        raw, m_connection.screen().root, static_cast<std::int16_t>(frame.x()),
        static_cast<std::int16_t>(frame.y()), static_cast<std::uint16_t>(frame.width()),
        static_cast<std::uint16_t>(frame.height()), allPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP, segment,
        0);
    xcb_shm_detach(raw, segment);
    const auto reply = co_await m_connection.reply<xcb_shm_get_image_reply_t>(question);
    if (!reply)
        co_return std::unexpected(reply.error());
    co_return opaqueImage(std::move(*shared).takeImage(), format);
}

QCoro::Task<Result<QImage>> X11ScreenCapture::sentPicture(QRect frame, PixelFormat format)
{
    const auto question =
        xcb_get_image(m_connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection.screen().root,
                      static_cast<std::int16_t>(frame.x()), static_cast<std::int16_t>(frame.y()),
                      static_cast<std::uint16_t>(frame.width()),
                      static_cast<std::uint16_t>(frame.height()), allPlanes);
    auto reply = co_await m_connection.reply<xcb_get_image_reply_t>(question);
    if (!reply)
        co_return std::unexpected(reply.error());
    const qsizetype rowLength = bytesPerLine(format, frame.width());
    if (xcb_get_image_data_length(reply->get()) < rowLength * frame.height())
        co_return failure(u"the X server sent only a part of the picture"_s);
    QImage picture(xcb_get_image_data(reply->get()), frame.width(), frame.height(), rowLength,
                   format.format, std::free, reply->get());
    std::ignore = reply->release(); // the picture frees it
    co_return opaqueImage(std::move(picture), format);
}

} // namespace lumacap::x11
