#pragma once

#include "graphics/Geometry.h"
#include "platform/Result.h"

#include <QCoroTask>
#include <QImage>
#include <QSize>

#include <cstdint>
#include <vector>

namespace lumacap {

/// Names a display for as long as it stays attached.
enum class DisplayId : std::uint32_t { };

/// One display that a picture can be taken of.
struct DisplayInfo {
    DisplayId displayID{};
    /// Points: the native pixels divided by the display's whole backing factor, so that points
    /// times the factor is exact.
    double width = 0;
    double height = 0;

    friend bool operator==(const DisplayInfo &, const DisplayInfo &) = default;
};

/// Stills of whole displays.
class ScreenCapture {
public:
    ScreenCapture() = default;
    Q_DISABLE_COPY_MOVE(ScreenCapture)
    virtual ~ScreenCapture() = default;

    /// The displays, the main one first, then in the desktop's own order. Empty when none is
    /// attached, which is no failure.
    virtual QCoro::Task<Result<std::vector<DisplayInfo>>> displays() = 0;

    /// Ends when a menu that has just been closed has left the screen: faded out, and what it
    /// covered painted anew. After two seconds at the latest, whatever the screen does.
    virtual QCoro::Task<> settle() = 0;

    /// A still of `display` with the pointer in it: native pixels whatever `pixelSize` was asked,
    /// `Format_ARGB32_Premultiplied`, opaque, first row at the top. The image owns its memory.
    virtual QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) = 0;
};

} // namespace lumacap
