#pragma once

#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"

#include <gtest/gtest.h>

#include <memory>

namespace lumacap::harness {

/// Two monitors side by side that are names for parts of one screen, of 800 x 600, the main one,
/// and of 640 x 600 to its right.
DesktopOptions twoSmallMonitors();

/// A desktop showing noise, an agent on it that saves into a folder, and a person at the mouse and
/// the keyboard.
struct SelectionFixture : testing::Test {
    /// Starts both, with the pointer at the upper left.
    void start(const DesktopOptions &options = twoSmallMonitors());
    /// Starts the desktop alone.
    void startDesktop(const DesktopOptions &options = twoSmallMonitors());
    void startAgent();
    /// Replaces the program's settings; captures are saved to a file in any case.
    void set(Settings settings);

    void openOverlay();
    bool overlayIsUp();

    /// Injects input from outside, as xdotool's commands.
    void input(const QStringList &steps);
    void press(const QString &key);
    void click(QPoint place);
    void drag(QPoint from, QPoint to);

    QStringList files() const;
    /// The one file that is there, waited for until the overlay has gone, too.
    QImage savedPicture();

    std::unique_ptr<PrivateDesktop> desktop;
    std::unique_ptr<PaintedScreen> screen;
    std::unique_ptr<Agent> agent;
};

} // namespace lumacap::harness
