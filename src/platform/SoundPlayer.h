#pragma once

#include <QtGlobal>

namespace lumacap {

/// The sound of a finished capture.
class SoundPlayer {
public:
    SoundPlayer() = default;
    Q_DISABLE_COPY_MOVE(SoundPlayer)
    virtual ~SoundPlayer() = default;

    /// Starts the sound and returns at once, also where the sound server is missing or hangs.
    virtual void play() = 0;
};

} // namespace lumacap
