#pragma once

#include "platform/SoundPlayer.h"

#include <QString>

#include <memory>

namespace lumacap::freedesktop {

/// Plays the sound theme's event "screen-capture", or the program's own sound where the theme has
/// none. The connection to the sound server and the one thread that speaks with it live as long as
/// sounds play: at rest nothing of them is left. A sound that can't begin within two seconds is
/// dropped, and so is one that comes while four are under way.
class CanberraSoundPlayer final : public SoundPlayer {
public:
    /// `ownSound` is the path of a sound file, looked at only when the theme has no sound.
    explicit CanberraSoundPlayer(const QString &ownSound);
    /// Waits for nothing: sounds that play are heard to their end.
    ~CanberraSoundPlayer() override;

    void play() override;

private:
    struct Requests;
    class Server;
    static void serve(const std::shared_ptr<Requests> &requests);

    /// Shared with the thread, which may be stuck in a server that hangs when the player, or the
    /// whole program, ends.
    std::shared_ptr<Requests> m_requests;
};

} // namespace lumacap::freedesktop
