#pragma once

#include "platform/ScreenCapture.h"

#include <QDBusConnection>

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::kwin {

/// Pictures that KWin takes of its outputs, for programs whose desktop entry asks for it.
class KWinScreenCapture final : public ScreenCapture {
public:
    /// Borrows `outputs`, which outlive the object; KWin is on `bus`.
    KWinScreenCapture(const wayland::Outputs &outputs, QDBusConnection bus);

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;

private:
    const wayland::Outputs &m_outputs;
    QDBusConnection m_bus;
};

} // namespace lumacap::kwin
