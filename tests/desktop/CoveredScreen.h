#pragma once

#include "harness/PrivateDesktop.h"

#include <QPoint>
#include <QRect>

#include <gtest/gtest.h>

#include <memory>

namespace lumacap::harness {

/// Where the monitors of `sideBySide` and `outputs` are, in root pixels.
inline constexpr QRect leftMonitor{0, 0, 640, 480};
inline constexpr QRect rightMonitor{640, 100, 800, 600};

/// Two monitors that are names for parts of one screen, the left one the main one.
DesktopOptions sideBySide(WindowManager windowManager = WindowManager::Openbox);
/// Real outputs: DUMMY0 on the left, the main one, DUMMY1 on the right, DUMMY2 further down.
DesktopOptions outputs();

/// The command line of the program that covers screens.
QStringList overlayProbe(const QStringList &words);
/// Whether `process` says the whole line, soon.
bool says(const Process &process, const QByteArray &line);
/// Whether another program gets pointer and keyboard, which it gives back at once.
bool isInputFree(const QByteArray &display);
/// Whether a window that no window manager looks after lies exactly over the right monitor.
bool isCovered(const QByteArray &display);
/// Waits until a surface must have given up on the keyboard.
void outlastTheKeyboardLimit();

/// A desktop on which a program covers a screen with a known picture.
struct CoveredScreenTest : testing::Test {
    /// Starts a desktop in the place of the last one.
    void start(const DesktopOptions &options);
    /// Starts the program, which covers the screen `index`, the main one being 0.
    Process &run(const QString &mode, int index, const QStringList &more = {});
    /// Covers the right one of the two monitors side by side, and waits until it is.
    Process &coverRight(const QString &mode = QStringLiteral("cover"));
    /// Waits until `monitor` shows the program's picture and nothing else.
    void requireShown(const QRect &monitor) const;
    void press(const QString &key) const;
    /// Presses and releases the pointer's first button at a root pixel.
    void click(QPoint place) const;

    std::unique_ptr<PrivateDesktop> desktop;
    QByteArray display;

protected:
    /// Injects input from outside.
    void xdotool(const QStringList &words) const;
};

} // namespace lumacap::harness
