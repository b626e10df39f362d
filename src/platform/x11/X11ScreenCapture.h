#pragma once

#include "platform/ScreenCapture.h"
#include "platform/x11/Monitors.h"

namespace lumacap {
struct PixelFormat;
}

namespace lumacap::x11 {

/// Pictures of an X server's monitors.
class X11ScreenCapture final : public ScreenCapture {
public:
    /// Borrows `connection`, which outlives the object.
    explicit X11ScreenCapture(xcb::Connection &connection);

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;

private:
    QCoro::Task<Result<QImage>> rootPicture(QRect frame, PixelFormat format);
    QCoro::Task<Result<QImage>> sharedPicture(QRect frame, PixelFormat format);
    QCoro::Task<Result<QImage>> sentPicture(QRect frame, PixelFormat format);

    xcb::Connection &m_connection;
};

} // namespace lumacap::x11
