#pragma once

#include "graphics/Geometry.h"

#include <QCoroTask>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumacap {

/// What a desktop tells of one window. Each fact is absent where it tells none.
struct WindowRecord {
    /// 0 for ordinary windows and dialogs, 3 for those kept above others, more for docks, panels,
    /// notifications and menus, less than 0 for the desktop itself and what is kept below.
    std::optional<int> layer;
    /// Names the window as long as it exists.
    std::optional<std::int64_t> windowNumber;
    std::optional<std::int64_t> ownerPID;
    /// The frame with its decoration, without invisible margins.
    std::optional<Rect<TopLeftGlobal>> bounds;
    /// The application's name as its person knows it.
    std::optional<QString> ownerName;
    /// The title.
    std::optional<QString> windowName;

    friend bool operator==(const WindowRecord &, const WindowRecord &) = default;
};

/// The windows on the screens.
class WindowList {
public:
    WindowList() = default;
    Q_DISABLE_COPY_MOVE(WindowList)
    virtual ~WindowList() = default;

    /// Asks the desktop for its windows and follows their changes from now on. Ends in bounded
    /// time, also where the desktop does not answer.
    virtual QCoro::Task<> prepare() = 0;
    /// Follows no longer and forgets the windows.
    virtual void release() = 0;

    /// The windows of the current workspace that are on a screen, frontmost first; empty before
    /// `prepare` has ended, and where the desktop tells nobody.
    virtual std::vector<WindowRecord> windows() const = 0;
};

} // namespace lumacap
