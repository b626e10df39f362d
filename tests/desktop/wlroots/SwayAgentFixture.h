#pragma once

#include "harness/Agent.h"
#include "harness/Pictures.h"
#include "harness/wayland/SwayDesktop.h"

#include <QImage>
#include <QMap>

#include <gtest/gtest.h>

#include <memory>

namespace lumacap::harness {

/// How many pixels differ outside of `hidden`, which holds the pointer.
qsizetype differingOutside(const QRect &hidden, const QImage &expected, const QImage &seen);

/// A headless sway whose outputs show noise, an agent on it that saves into a folder, and a person
/// at the mouse and the keyboard.
struct SwayAgentFixture : testing::Test {
    /// Starts the desktop, with the pointer at the upper left of the first output.
    void startDesktop(const SwayOptions &options = {});
    void startAgent();
    /// Opens the overlay and waits until `output` shows it.
    void openOverlay(const QString &output = QStringLiteral("HEADLESS-1"));
    /// Whether `output` shows what is painted on it.
    bool showsPlainly(const QString &output = QStringLiteral("HEADLESS-1"));

    QStringList files() const;
    /// The one file that is there, waited for.
    QImage savedPicture();

    std::unique_ptr<SwayDesktop> desktop;
    std::unique_ptr<Agent> agent;
    /// What is under all windows, by output.
    QMap<QString, QImage> painted;
};

} // namespace lumacap::harness
