#pragma once

#include "platform/wayland/PointerFinder.h"

#include <QDBusConnection>

namespace lumacap::kwin {

/// Asks KWin where the pointer is.
class KWinPointerFinder final : public wayland::PointerFinder {
public:
    /// KWin is on `bus`.
    explicit KWinPointerFinder(QDBusConnection bus);

    QCoro::Task<std::optional<QPointF>> find() override;

private:
    QDBusConnection m_bus;
};

/// The place in the words of the script that asks for it: the middle of the pixel, for KWin cuts
/// the fractions off. Nothing in any other words.
std::optional<QPointF> pointerPlace(const QString &words);

} // namespace lumacap::kwin
