#pragma once

#include "graphics/Geometry.h"
#include "platform/ScreenCapture.h"

#include <QCoroTask>

#include <optional>
#include <vector>

namespace lumacap {

/// A screen as the person sees it arranged.
struct Screen {
    /// The display of this screen that ScreenCapture knows, where one can be told.
    std::optional<DisplayId> number;
    Rect<Global> frame;
    /// Device pixels a point: a whole number, at least 1, on every real screen.
    double backingScaleFactor = 1;
    /// How many device pixels before the right and the lower edge the pointer is stopped, by a
    /// desktop that counts its places in units of several.
    double pointerStep = 1;

    friend bool operator==(const Screen &, const Screen &) = default;
};

/// The arrangement of the screens.
class Screens {
public:
    Screens() = default;
    Q_DISABLE_COPY_MOVE(Screens)
    virtual ~Screens() = default;

    /// Asks the desktop where the pointer is. Ends in bounded time, also where the desktop does not
    /// answer.
    virtual QCoro::Task<> prepare() = 0;

    /// The desktop's primary screen, else its first; nothing when no screen is attached.
    virtual std::optional<Screen> mainScreen() const = 0;

    /// All screens, the main one first.
    virtual std::vector<Screen> screens() const = 0;

    /// Where the pointer is, or was at the end of the last `prepare`; nothing where the desktop
    /// does not tell.
    virtual std::optional<Point<Global>> pointerPosition() const = 0;
};

} // namespace lumacap
