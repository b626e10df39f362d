#pragma once

#include "platform/Result.h"
#include "platform/pixels/PixelFormat.h"
#include "platform/pixels/SharedImage.h"
#include "platform/wayland/Owned.h"

#include <QFuture>
#include <QImage>
#include <QObject>
#include <QPromise>

#include <chrono>
#include <cstdint>
#include <optional>

struct wl_buffer;
struct wl_shm;
struct zwlr_screencopy_frame_v1;
struct zwlr_screencopy_frame_v1_listener;

namespace lumacap::wayland {
class Connection;
}

namespace lumacap::wlroots {

/// A picture of one output while the compositor makes it.
class ScreencopyFrame final : public QObject {
public:
    /// When the compositor takes it: now, or once something was drawn since the last picture that
    /// was asked for in this way. The latter needs the second version of the protocol.
    enum class Copy { Now, OnceDrawn };

    /// Asks for the picture that `frame` stands for. Borrows `connection` and `memory`, which
    /// outlive the object.
    ScreencopyFrame(wayland::Connection &connection, wl_shm &memory,
                    wayland::Owned<zwlr_screencopy_frame_v1> frame, Copy copy,
                    std::chrono::milliseconds limit);
    Q_DISABLE_COPY_MOVE(ScreencopyFrame)
    ~ScreencopyFrame() override;

    /// Finished when the picture is there, or there will be none: at the latest after the limit.
    QFuture<void> ended() const { return m_end.future(); }
    /// Whether it ended with a picture.
    bool hasPicture() const { return m_hasEnded && !m_failure; }
    /// The picture as the output scans it out, opaque, first row at the top. Called once, at the
    /// end.
    Result<QImage> takePicture();

    /// There will be no picture, for this reason. Nothing after the end.
    void fail(const QString &reason);

private:
    struct Offer {
        std::uint32_t format = 0;
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        std::uint32_t bytesPerLine = 0;
    };

    static const zwlr_screencopy_frame_v1_listener &listener();
    void consider(const Offer &offer);
    void copyToMemory();
    void finish();

    wayland::Connection &m_connection;
    wl_shm &m_shm;
    wayland::Owned<zwlr_screencopy_frame_v1> m_frame;
    Copy m_copy;
    std::optional<Offer> m_offer;
    PixelFormat m_format;
    std::optional<SharedImage> m_memory;
    wayland::Owned<wl_buffer> m_buffer;
    bool m_isUpsideDown = false;
    std::optional<Failure> m_failure;
    QPromise<void> m_end;
    bool m_hasEnded = false;
};

} // namespace lumacap::wlroots
