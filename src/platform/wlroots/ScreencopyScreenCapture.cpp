#include "platform/wlroots/ScreencopyScreenCapture.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Outputs.h"
#include "platform/wlroots/Upright.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QPointer>

#include <algorithm>
#include <chrono>

#include <protocols/wlr-screencopy-unstable-v1.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::wlroots {

namespace {

constexpr std::uint32_t managerVersion = 3;
constexpr std::uint32_t memoryVersion = 1;
constexpr auto grabLimit = 10s;

// A panel takes its menu off the screen about when it tells what was chosen in it, the windows
// beneath paint themselves after that, and a compositor may fade the menu out: nothing but the end
// of the drawing tells when all have done so. Where something always moves, a film say, it ends
// never.
constexpr auto menuIsClosed = 100ms;
constexpr auto restLasts = 150ms;
constexpr auto betweenPictures = 50ms; // of a film: each of them costs a copy of the screen
constexpr auto settledAnyway = 1s;

const QString unplugged = u"the display has been unplugged"_s;

std::optional<wayland::Output> find(const wayland::Outputs &outputs, DisplayId display)
{
    const auto all = outputs.all();
    const auto found = std::ranges::find(all, display, &wayland::Output::id);
    return found == all.end() ? std::nullopt : std::optional(*found);
}

} // namespace

bool ScreencopyScreenCapture::isOffered(const wayland::Connection &connection)
{
    return connection.offers(zwlr_screencopy_manager_v1_interface)
        && connection.offers(wl_shm_interface);
}

ScreencopyScreenCapture::ScreencopyScreenCapture(wayland::Connection &connection,
                                                 const wayland::Outputs &outputs)
    : m_connection(connection)
    , m_outputs(outputs)
    , m_manager(connection.bind(zwlr_screencopy_manager_v1_interface, managerVersion,
                                &zwlr_screencopy_manager_v1_destroy))
    , m_memory(connection.bind(wl_shm_interface, memoryVersion, &wl_shm_destroy))
{
}

QCoro::Task<Result<std::vector<DisplayInfo>>> ScreencopyScreenCapture::displays()
{
    co_return wayland::displaysOf(m_outputs.all());
}

std::unique_ptr<ScreencopyFrame>
ScreencopyScreenCapture::frameOf(wl_output *output, ScreencopyFrame::Copy copy,
                                 std::chrono::milliseconds limit) const
{
    // A pointer that comes and goes over a screen at rest is no drawing.
    const std::int32_t withPointer = copy == ScreencopyFrame::Copy::Now ? 1 : 0;
    return std::make_unique<ScreencopyFrame>(
        m_connection, *m_memory,
        wayland::owned(
            zwlr_screencopy_manager_v1_capture_output(m_manager.get(), withPointer, output),
            &zwlr_screencopy_frame_v1_destroy),
        copy, limit);
}

std::vector<std::unique_ptr<ScreencopyFrame>> ScreencopyScreenCapture::framesOnceDrawn() const
{
    std::vector<std::unique_ptr<ScreencopyFrame>> frames;
    const bool tellsOfDrawing = zwlr_screencopy_manager_v1_get_version(m_manager.get())
        >= ZWLR_SCREENCOPY_FRAME_V1_COPY_WITH_DAMAGE_SINCE_VERSION;
    if (!tellsOfDrawing)
        return frames;
    for (const wayland::Output &output : m_outputs.all())
        frames.push_back(frameOf(output.proxy, ScreencopyFrame::Copy::OnceDrawn, restLasts));
    return frames;
}

QCoro::Task<> ScreencopyScreenCapture::settle()
{
    const QPointer self{this};
    const QDeadlineTimer deadline(settledAnyway);
    co_await QCoro::sleepFor(menuIsClosed);
    if (!self)
        co_return;
    auto frames = framesOnceDrawn();
    if (frames.empty()) // it does not tell, and may draw for as long as others rest
        co_await QCoro::sleepFor(restLasts);
    bool isMoving = !frames.empty();
    while (isMoving && !deadline.hasExpired()) {
        isMoving = false;
        for (const auto &frame : frames) {
            co_await frame->ended();
            if (frame->hasPicture())
                isMoving = true;
        }
        co_await QCoro::sleepFor(betweenPictures);
        if (!self)
            co_return;
        frames = framesOnceDrawn();
    }
}

QCoro::Task<Result<QImage>> ScreencopyScreenCapture::grab(DisplayId display, QSize /*pixelSize*/)
{
    const auto output = find(m_outputs, display);
    if (!output)
        co_return failure(unplugged);
    const auto frame = frameOf(output->proxy, ScreencopyFrame::Copy::Now, grabLimit);
    connect(&m_outputs, &wayland::Outputs::changed, frame.get(),
            [raw = frame.get(), &outputs = m_outputs, display] {
                if (!find(outputs, display))
                    raw->fail(unplugged);
            });
    const std::int32_t transform = output->transform;
    co_await frame->ended();
    auto picture = frame->takePicture();
    if (!picture)
        co_return picture;
    co_return upright(std::move(*picture), transform);
}

} // namespace lumacap::wlroots
