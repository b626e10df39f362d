#include "platform/x11/Monitors.h"

#include "graphics/BackingFactor.h"
#include "platform/xcb/Connection.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

#include <xcb/randr.h>

namespace lumacap::x11 {

namespace {

constexpr std::uint8_t activeOnly = 1;

std::vector<Monitor> wholeRoot(QSize size)
{
    return {{DisplayId{}, QRect(QPoint(0, 0), size)}};
}

std::vector<Monitor> monitorsOf(const xcb_randr_get_monitors_reply_t &reply)
{
    std::vector<Monitor> monitors;
    auto position = monitors.end();
    for (auto item = xcb_randr_get_monitors_monitors_iterator(&reply); item.rem > 0;
         xcb_randr_monitor_info_next(&item)) {
        const xcb_randr_monitor_info_t &info = *item.data;
        position = info.primary != 0 ? monitors.begin() : monitors.end();
        monitors.insert(position,
                        {DisplayId{info.name}, QRect(info.x, info.y, info.width, info.height)});
    }
    return monitors;
}

} // namespace

QCoro::Task<Result<std::vector<Monitor>>> queryMonitors(xcb::Connection &connection)
{
    if (!connection.hasMonitors()) {
        const auto size = xcb_get_geometry(connection.raw(), connection.screen().root);
        const auto geometry = co_await connection.reply<xcb_get_geometry_reply_t>(size);
        if (!geometry)
            co_return std::unexpected(geometry.error());
        co_return wholeRoot({(*geometry)->width, (*geometry)->height});
    }
    const auto question =
        xcb_randr_get_monitors(connection.raw(), connection.screen().root, activeOnly);
    const auto reply = co_await connection.reply<xcb_randr_get_monitors_reply_t>(question);
    if (!reply)
        co_return std::unexpected(reply.error());
    co_return monitorsOf(**reply);
}

std::vector<Monitor> currentMonitors(xcb::Connection &connection)
{
    if (!connection.hasMonitors()) {
        const xcb_screen_t &screen = connection.screen();
        return wholeRoot({screen.width_in_pixels, screen.height_in_pixels});
    }
    const auto question =
        xcb_randr_get_monitors(connection.raw(), connection.screen().root, activeOnly);
    const xcb::Owned<xcb_randr_get_monitors_reply_t> reply(
        xcb_randr_get_monitors_reply(connection.raw(), question, nullptr));
    connection.flush();
    return reply ? monitorsOf(*reply) : std::vector<Monitor>();
}

Screen screenOf(const Monitor &monitor, const Monitor &main)
{
    return {monitor.id, globalFrame(monitor.frame, main.frame, backingFactorOf(main.frame)),
            backingFactorOf(monitor.frame)};
}

std::optional<QRect> frameOf(const Screen &screen, const std::vector<Monitor> &monitors)
{
    const auto monitor = std::ranges::find_if(monitors, [&](const Monitor &candidate) {
        return screenOf(candidate, monitors.front()) == screen;
    });
    return monitor == monitors.end() ? std::nullopt : std::optional(monitor->frame);
}

QScreen *toolkitScreenAt(QPoint origin)
{
    // The toolkit keeps a screen's native origin, so that the two lists are matched by it.
    const auto screens = QGuiApplication::screens();
    const auto screen = std::ranges::find_if(screens, [origin](const QScreen *candidate) {
        return candidate->geometry().topLeft() == origin;
    });
    return screen == screens.end() ? nullptr : *screen;
}

double backingFactorOf(const QRect &frame)
{
    const QScreen *const screen = toolkitScreenAt(frame.topLeft());
    return screen == nullptr ? 1 : backingFactor(screen->devicePixelRatio());
}

Rect<Global> globalFrame(const QRect &frame, const QRect &main, double factor)
{
    const int bottom = frame.y() + frame.height();
    const int mainBottom = main.y() + main.height();
    return {{(frame.x() - main.x()) / factor, (mainBottom - bottom) / factor},
            {frame.width() / factor, frame.height() / factor}};
}

Point<Global> globalPoint(QPoint pixel, const QRect &main, double factor)
{
    const int mainBottom = main.y() + main.height();
    return {(pixel.x() + 0.5 - main.x()) / factor, (mainBottom - pixel.y() - 0.5) / factor};
}

} // namespace lumacap::x11
