#pragma once

#include "harness/PrivateDesktop.h"

#include <QString>

namespace lumacap::harness {

/// A sound server without loudspeakers in a desktop, and an ear on it.
class SoundServer {
public:
    /// Starts it; throws when it does not come up.
    explicit SoundServer(PrivateDesktop &desktop);
    /// How many sounds have begun since the start.
    int soundsBegun() const;
    /// Whether a sound announced as the event `name` is being played now.
    bool isPlaying(const QString &name);

private:
    PrivateDesktop &m_desktop;
    Process *m_ear = nullptr;
};

/// A sound server that takes connections and never says a word.
class SilentSoundServer {
public:
    explicit SilentSoundServer(PrivateDesktop &desktop);
    Q_DISABLE_COPY_MOVE(SilentSoundServer)
    ~SilentSoundServer();

private:
    int m_socket = -1;
};

} // namespace lumacap::harness
