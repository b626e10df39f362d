#include "platform/wlroots/ScreencopyFrame.h"

#include "platform/wayland/Connection.h"
#include "platform/wlroots/ShmFormat.h"

#include <QSize>
#include <QTimer>

#include <limits>
#include <utility>

#include <protocols/wlr-screencopy-unstable-v1.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;

namespace lumacap::wlroots {

namespace {

ScreencopyFrame &self(void *data)
{
    return *static_cast<ScreencopyFrame *>(data);
}

/// Whether rows of this many bytes hold as many pixels, and all rows are of a size that the
/// protocol can name.
bool isSound(std::uint64_t width, std::uint64_t height, std::uint64_t bytesPerLine,
             std::uint64_t bitsPerPixel)
{
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    return width > 0 && height > 0 && height <= most && bytesPerLine <= most
        && width <= bytesPerLine * 8 / bitsPerPixel && bytesPerLine * height <= most;
}

} // namespace

ScreencopyFrame::ScreencopyFrame(wayland::Connection &connection, wl_shm &memory,
                                 wayland::Owned<zwlr_screencopy_frame_v1> frame, Copy copy,
                                 std::chrono::milliseconds limit)
    : m_connection(connection)
    , m_shm(memory)
    , m_frame(std::move(frame))
    , m_copy(copy)
{
    m_end.start();
    zwlr_screencopy_frame_v1_add_listener(m_frame.get(), &listener(), this);
    connect(&connection, &wayland::Connection::closed, this,
            [this] { fail(u"the compositor has gone"_s); });
    QTimer::singleShot(limit, this, [this] { fail(u"the compositor does not answer"_s); });
    connection.flush();
}

ScreencopyFrame::~ScreencopyFrame()
{
    m_buffer.reset();
    m_frame.reset();
    m_connection.flush(); // an unanswered question would cost the compositor something
}

const zwlr_screencopy_frame_v1_listener &ScreencopyFrame::listener()
{
    static constexpr zwlr_screencopy_frame_v1_listener listener{
        .buffer =
            [](void *data, zwlr_screencopy_frame_v1 *frame, std::uint32_t format,
               std::uint32_t width, std::uint32_t height, std::uint32_t bytesPerLine) {
                self(data).consider({format, width, height, bytesPerLine});
                // Older versions don't tell the end of the offers, of which they make just one.
                if (zwlr_screencopy_frame_v1_get_version(frame)
                    < ZWLR_SCREENCOPY_FRAME_V1_BUFFER_DONE_SINCE_VERSION)
                    self(data).copyToMemory();
            },
        .flags =
            [](void *data, zwlr_screencopy_frame_v1 * /*frame*/, std::uint32_t flags) {
                self(data).m_isUpsideDown = (flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT) != 0;
            },
        .ready = [](void *data, zwlr_screencopy_frame_v1 * /*frame*/, std::uint32_t /*high*/,
                    std::uint32_t /*low*/, std::uint32_t /*nanoseconds*/) { self(data).finish(); },
        .failed =
            [](void *data, zwlr_screencopy_frame_v1 * /*frame*/) {
                self(data).fail(u"the compositor could not copy the display"_s);
            },
        .damage = [](void * /*data*/, zwlr_screencopy_frame_v1 * /*frame*/, std::uint32_t /*x*/,
                     std::uint32_t /*y*/, std::uint32_t /*width*/, std::uint32_t /*height*/) {},
        .linux_dmabuf = [](void * /*data*/, zwlr_screencopy_frame_v1 * /*frame*/,
                           std::uint32_t /*format*/, std::uint32_t /*width*/,
                           std::uint32_t /*height*/) {},
        .buffer_done = [](void *data,
                          zwlr_screencopy_frame_v1 * /*frame*/) { self(data).copyToMemory(); },
    };
    return listener;
}

void ScreencopyFrame::consider(const Offer &offer)
{
    if (!m_offer || !pixelFormatOf(m_offer->format))
        m_offer = offer;
}

void ScreencopyFrame::copyToMemory()
{
    if (m_hasEnded || m_memory)
        return;
    const auto format = m_offer ? pixelFormatOf(m_offer->format) : std::nullopt;
    if (!format
        || !isSound(m_offer->width, m_offer->height, m_offer->bytesPerLine,
                    static_cast<std::uint64_t>(format->bitsPerPixel)))
        return fail(u"the display's pixels are of an unknown format"_s);
    m_format = *format;
    const QSize size(static_cast<int>(m_offer->width), static_cast<int>(m_offer->height));
    const auto bytesPerLine = static_cast<std::int32_t>(m_offer->bytesPerLine);
    auto memory = SharedImage::create(size, format->format, bytesPerLine);
    if (!memory)
        return fail(memory.error().description);

    m_memory.emplace(std::move(*memory));
    const int descriptor = m_memory->takeDescriptor();
    const auto pool = wayland::owned(
        wl_shm_create_pool(&m_shm, descriptor, bytesPerLine * size.height()), &wl_shm_pool_destroy);
    close(descriptor);
    m_buffer = wayland::owned(wl_shm_pool_create_buffer(pool.get(), 0, size.width(), size.height(),
                                                        bytesPerLine, m_offer->format),
                              &wl_buffer_destroy);
    if (m_copy == Copy::OnceDrawn)
        zwlr_screencopy_frame_v1_copy_with_damage(m_frame.get(), m_buffer.get());
    else
        zwlr_screencopy_frame_v1_copy(m_frame.get(), m_buffer.get());
    m_connection.flush();
}

void ScreencopyFrame::fail(const QString &reason)
{
    if (m_hasEnded)
        return;
    m_failure = Failure{reason};
    finish();
}

void ScreencopyFrame::finish()
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    m_end.finish();
}

Result<QImage> ScreencopyFrame::takePicture()
{
    if (m_failure)
        return std::unexpected(*m_failure);
    if (!m_memory) // ready before it was asked to copy
        return failure(u"the compositor could not copy the display"_s);
    QImage picture = opaqueImage(std::move(*m_memory).takeImage(), m_format);
    if (picture.isNull())
        return failure(u"there is no memory for the picture"_s);
    if (m_isUpsideDown)
        picture.mirror(false, true);
    return picture;
}

} // namespace lumacap::wlroots
