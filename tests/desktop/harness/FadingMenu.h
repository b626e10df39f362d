#pragma once

#include "harness/XConnection.h"

#include <QRect>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

namespace lumacap::harness {

/// A menu as a compositor leaves it: drawn anew in short steps, still on the screen after an entry
/// was chosen, then gone. Steps are drawn from the start on, by a thread of its own.
class FadingMenu {
public:
    /// Covers `area` (root pixels) of the screen of `display`, above all other windows.
    FadingMenu(const QByteArray &display, const QRect &area);
    Q_DISABLE_COPY_MOVE(FadingMenu)
    /// Takes it off the screen.
    ~FadingMenu();

    /// Draws so many steps more, 10 ms apart, then takes the menu off the screen. Comes back when
    /// it has gone.
    void fadeOut(int steps);
    /// The longest time between two steps so far, which a busy machine makes longer.
    std::chrono::milliseconds longestStep() const { return m_longestStep; }

private:
    void drawSteps();

    XConnection m_connection;
    std::uint32_t m_window = 0;
    std::atomic<int> m_stepsDrawn = 0;
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_isEnding = false; ///< behind the mutex
    std::atomic<std::chrono::milliseconds> m_longestStep{};
    std::thread m_steps;
};

} // namespace lumacap::harness
