#pragma once

#include "platform/WindowList.h"
#include "platform/wayland/Output.h"

#include <QByteArray>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <vector>

namespace lumacap {
class ApplicationNames;
}

namespace lumacap::kwin {

/// What the script tells of one window.
struct WindowFacts {
    /// Names the window as long as it exists.
    std::uint32_t number = 0;
    std::int64_t processId = 0; ///< not more than 0 where KWin knows none
    QString title;
    QString desktopFile;
    QString className;
    QString instance;
    /// The compositor's units, y down, with the decoration and without the shadow.
    QRectF frame;
    /// KWin's word for the kind of window: "dock"; "normal" for all without one.
    QString kind;
    /// KWin's own number of the place in the order.
    int layer = 0;
    bool isKeptAbove = false;
    bool isKeptBelow = false;
    bool isFullScreen = false;

    friend bool operator==(const WindowFacts &, const WindowFacts &) = default;
};

/// What the script told, without what can't be a window.
std::vector<WindowFacts> windowFacts(const QByteArray &told);

/// As `WindowRecord::layer` counts.
int layerOf(const WindowFacts &facts);

/// The windows that are on one of `outputs`, the frontmost first; `facts` begin with the lowest.
/// What covers a screen for this program is not among them.
std::vector<WindowRecord> windowRecords(const std::vector<WindowFacts> &facts,
                                        const std::vector<wayland::Output> &outputs,
                                        const ApplicationNames &names);

} // namespace lumacap::kwin
