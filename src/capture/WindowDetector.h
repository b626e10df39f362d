#pragma once

#include "graphics/Geometry.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumacap {

class WindowList;
struct WindowRecord;

/// An ordinary window on a screen.
struct DetectedWindow {
    std::uint32_t windowID = 0;
    /// With its decoration, in the desktop's own units.
    Rect<TopLeftGlobal> frame;
    /// The application's name; empty where the desktop tells none.
    QString ownerName;
    std::int32_t ownerPID = 0;
    /// The title, where there is one.
    std::optional<QString> windowName;
    /// 0 for most windows, up to 3 for those kept above them.
    int layer = 0;

    friend bool operator==(const DetectedWindow &, const DetectedWindow &) = default;
};

/// Finds the ordinary windows on the screens. Keeps nothing: each question reads the desktop's list
/// anew.
class WindowDetector {
public:
    /// Borrows `windowList`, which outlives the object.
    explicit WindowDetector(const WindowList &windowList);

    /// Frontmost first, without those of the process `excludingPID`.
    std::vector<DetectedWindow> getVisibleWindows(std::optional<std::int32_t> excludingPID) const;

    /// The frontmost of them that `point` is in; the left and the top edge of a frame belong to it,
    /// the right and the bottom one do not.
    std::optional<DetectedWindow> windowAtPoint(Point<TopLeftGlobal> point,
                                                std::optional<std::int32_t> excludingPID) const;

private:
    const WindowList &m_windowList;
};

} // namespace lumacap
