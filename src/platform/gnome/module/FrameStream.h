#pragma once

#include "platform/Result.h"
#include "platform/gnome/module/VideoPixels.h"

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QSocketNotifier>

#include <cstdint>
#include <memory>
#include <optional>

#include <pipewire/pipewire.h>

namespace lumacap::gnome {

/// What is in a picture of a stream.
struct Frame {
    QImage picture; ///< null where only the pointer was asked for
    std::optional<QPoint> pointer; ///< where it is within, for a stream that tells it
};

/// What of a stream's picture is wanted.
enum class Wanted { Picture, Pointer };

/// A connection to PipeWire for one picture, served by the main loop. All that is open for it, and
/// the thread that PipeWire gives each of its clients, goes with the object.
class FrameStream final : public QObject {
    Q_OBJECT

public:
    /// Asks for the stream of `node`. PipeWire has been initialised.
    FrameStream(std::uint32_t node, Wanted wanted);
    ~FrameStream() override;
    Q_DISABLE_COPY_MOVE(FrameStream)

    /// The first whole picture, once it `ended`.
    Result<Frame> takeAnswer() { return std::move(m_answer); }

Q_SIGNALS:
    /// There is an answer, and there will be no other. Never within a call of the object.
    void ended();

private:
    template <auto destroy>
    struct Destroy {
        template <class T>
        void operator()(T *object) const noexcept
        {
            destroy(object);
        }
    };

    static const pw_core_events &coreEvents();
    static const pw_stream_events &streamEvents();

    Result<void> connectTo(std::uint32_t node);
    void iterate();
    void takeFormat(const spa_pod *param);
    void takeBuffers();
    std::optional<Frame> frameIn(const spa_buffer &buffer) const;
    std::optional<QImage> pictureIn(const spa_buffer &buffer) const;
    void end(Result<Frame> answer);

    std::unique_ptr<pw_loop, Destroy<pw_loop_destroy>> m_loop;
    std::unique_ptr<pw_context, Destroy<pw_context_destroy>> m_context;
    std::unique_ptr<pw_core, Destroy<pw_core_disconnect>> m_core;
    spa_hook m_coreHook{};
    std::unique_ptr<pw_stream, Destroy<pw_stream_destroy>> m_stream;
    spa_hook m_streamHook{};
    std::optional<QSocketNotifier> m_readable;
    std::optional<VideoFormat> m_format;
    Wanted m_wanted;
    Result<Frame> m_answer;
    bool m_hasEnded = false;
};

} // namespace lumacap::gnome
