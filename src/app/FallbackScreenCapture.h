#pragma once

#include "platform/ScreenCapture.h"

#include <QObject>

#include <memory>

namespace lumacap {

/// Two ways to take the same displays, of which the desktop may refuse the first.
class FallbackScreenCapture final : public QObject, public ScreenCapture {
    Q_OBJECT

public:
    /// Both name a display by the same number. The displays are those of `first`.
    FallbackScreenCapture(std::unique_ptr<ScreenCapture> first,
                          std::unique_ptr<ScreenCapture> second);
    Q_DISABLE_COPY_MOVE(FallbackScreenCapture)
    ~FallbackScreenCapture() override;

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    /// By the second way if the first fails at once for a display that is there. Of two failures
    /// both reasons are told.
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;

private:
    QCoro::Task<bool> isThere(DisplayId display);

    std::unique_ptr<ScreenCapture> m_first;
    std::unique_ptr<ScreenCapture> m_second;
};

} // namespace lumacap
