#pragma once

#include "platform/wayland/PointerFinder.h"

namespace lumacap::wayland {

class Connection;
class Outputs;

/// Finds the pointer by laying an invisible surface over each output for a moment: the compositor
/// tells the one that comes to lie under the pointer where in it the pointer is.
///
/// What was under the pointer loses it for that moment, and with it whatever shows that the pointer
/// is there. So nobody is asked where there is one output only, on which it must be.
class ProbePointerFinder final : public PointerFinder {
public:
    /// Whether the compositor lets surfaces be laid over its outputs.
    static bool isOffered(const Connection &connection);

    /// Borrows both, which outlive the object.
    ProbePointerFinder(Connection &connection, const Outputs &outputs);

    QCoro::Task<std::optional<QPointF>> find() override;

private:
    Connection &m_connection;
    const Outputs &m_outputs;
};

} // namespace lumacap::wayland
