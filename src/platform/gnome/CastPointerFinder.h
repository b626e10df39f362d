#pragma once

#include "platform/wayland/PointerFinder.h"

#include <QDBusConnection>

#include <memory>

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::gnome {

class FrameReader;

/// Finds the pointer by a short cast of one monitor after the other, which tells where the pointer
/// is within it: all that GNOME's shell tells a program of it.
class CastPointerFinder final : public wayland::PointerFinder {
public:
    /// Borrows `outputs`, which outlive the object.
    CastPointerFinder(QDBusConnection bus, const wayland::Outputs &outputs,
                      std::unique_ptr<FrameReader> reader);
    ~CastPointerFinder() override;
    Q_DISABLE_COPY_MOVE(CastPointerFinder)

    /// Nothing where there is one monitor, too, for which nobody needs it.
    QCoro::Task<std::optional<QPointF>> find() override;

private:
    QDBusConnection m_bus;
    const wayland::Outputs &m_outputs;
    /// Shared with the casts under way, which may outlive this object.
    std::shared_ptr<FrameReader> m_reader;
};

} // namespace lumacap::gnome
