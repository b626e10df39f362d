#pragma once

#include "platform/ScreenCapture.h"
#include "platform/Screens.h"

#include <QRect>
#include <QSize>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

struct wl_output;

namespace lumacap::wayland {

/// An output of the compositor.
struct Output {
    /// By which the compositor, the toolkit and every other service know it: "DP-1".
    QString name;
    /// Native pixels, as the person sees them: a rotated output's width is its mode's height.
    QSize pixels;
    /// The compositor's units, y down.
    QRect frame;
    /// Borrowed of the outputs, as long as this one stays.
    wl_output *proxy = nullptr;
    /// How the compositor turns what it shows there, in the numbers of wl_output.
    std::int32_t transform = 0;

    DisplayId id() const;
    /// Native pixels a unit of the compositor's.
    double scale() const;
    /// The desktop's scale as a whole number: rounded, halves up, at least 1.
    double backingFactor() const;

    friend bool operator==(const Output &, const Output &) = default;
};

/// The display on the output of this name, the same for every service.
DisplayId displayIdOf(QStringView outputName);

/// What captures call the outputs, in their order.
std::vector<DisplayInfo> displaysOf(const std::vector<Output> &outputs);

/// The outputs as screens, in their order. The first one is the main one.
std::vector<Screen> screensOf(const std::vector<Output> &outputs);

/// The middle of the unit that `place` is in, in the compositor's units, y down: on the screen of
/// the output that has it, and on no other.
Point<Global> globalPoint(QPointF place, const std::vector<Output> &outputs);

/// Frames of windows count from the upper left of the first output.
Rect<TopLeftGlobal> topLeftFrame(const QRectF &frame, const std::vector<Output> &outputs);

/// The output that `screen` is; nothing when none is that screen as it was.
std::optional<Output> outputOf(const Screen &screen, const std::vector<Output> &outputs);

} // namespace lumacap::wayland
