#pragma once

#include <QCoroTask>
#include <QPointF>

#include <optional>

namespace lumacap::wayland {

/// Finds the pointer, of which Wayland tells only the window under it.
class PointerFinder {
public:
    PointerFinder() = default;
    Q_DISABLE_COPY_MOVE(PointerFinder)
    virtual ~PointerFinder() = default;

    /// In the compositor's units, y down; nothing where the compositor does not tell. Ends in
    /// bounded time.
    virtual QCoro::Task<std::optional<QPointF>> find() = 0;
};

} // namespace lumacap::wayland
