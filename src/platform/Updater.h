#pragma once

#include <QtGlobal>

namespace lumacap {

/// The desktop's way of keeping the program up to date.
class Updater {
public:
    Updater() = default;
    Q_DISABLE_COPY_MOVE(Updater)
    virtual ~Updater() = default;

    /// Called once, at launch.
    virtual void start() = 0;
    /// Shows the person whether there is a newer version, in the desktop's own software centre.
    virtual void checkForUpdates() = 0;
};

} // namespace lumacap
