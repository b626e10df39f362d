#pragma once

#include "platform/Updater.h"

namespace lumacap::freedesktop {

/// The desktop's software centre keeps the program up to date; this opens it at the program's page.
class SoftwareCentreUpdater final : public Updater {
public:
    /// Does nothing: whoever installs packages here looks for new versions, at its own times.
    void start() override;
    /// Returns at once. One line on standard error where nothing opened the page. What was opened
    /// stays open when the updater or the program is gone.
    void checkForUpdates() override;
};

} // namespace lumacap::freedesktop
