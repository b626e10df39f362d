#pragma once

#include "platform/ScreenCapture.h"
#include "platform/wayland/Owned.h"
#include "platform/wlroots/ScreencopyFrame.h"

#include <QObject>

#include <memory>
#include <vector>

struct wl_output;
struct zwlr_screencopy_manager_v1;

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::wlroots {

/// Pictures of the outputs of a compositor that copies them into our memory, as those on wlroots
/// do.
class ScreencopyScreenCapture final : public QObject, public ScreenCapture {
    Q_OBJECT

public:
    /// Whether the compositor does so.
    static bool isOffered(const wayland::Connection &connection);

    /// Borrows `connection` and `outputs`, which outlive the object.
    ScreencopyScreenCapture(wayland::Connection &connection, const wayland::Outputs &outputs);

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;

private:
    std::unique_ptr<ScreencopyFrame> frameOf(wl_output *output, ScreencopyFrame::Copy copy,
                                             std::chrono::milliseconds limit) const;
    std::vector<std::unique_ptr<ScreencopyFrame>> framesOnceDrawn() const;

    wayland::Connection &m_connection;
    const wayland::Outputs &m_outputs;
    wayland::Owned<zwlr_screencopy_manager_v1> m_manager;
    wayland::Owned<wl_shm> m_memory;
};

} // namespace lumacap::wlroots
