#pragma once

#include "platform/WindowList.h"
#include "platform/x11/Monitors.h"
#include "platform/x11/windows/ClientWindows.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace lumacap {
class ApplicationNames;
}

namespace lumacap::x11 {

struct RootState;
struct WindowFacts;

/// The windows on an X server, with a window manager or without: the order is that of the root's
/// children, which is what is seen.
class X11WindowList final : public QObject, public WindowList {
    Q_OBJECT

public:
    /// Borrows both, which outlive the object.
    X11WindowList(xcb::Connection &connection, const ApplicationNames &names);
    ~X11WindowList() override;
    Q_DISABLE_COPY_MOVE(X11WindowList)

    QCoro::Task<> prepare() override;
    void release() override;
    std::vector<WindowRecord> windows() const override { return m_windows; }

private:
    struct Following;

    QCoro::Task<> read();
    QCoro::Task<> readAnew();
    void watch(const std::vector<SeenWindow> &seen);
    void keep(const RootState &root, const std::vector<Monitor> &monitors,
              const std::vector<WindowFacts> &all);
    void handleEvent(const void *event);

    xcb::Connection &m_connection;
    const ApplicationNames &m_names;
    std::unique_ptr<Following> m_following; // from `prepare` to `release`
    QTimer m_settling; // from the first change to the next reading
    QDeadlineTimer m_pause{0}; // until changes are read at once again
    std::vector<WindowRecord> m_windows;
    unsigned int m_round = 0; // another one since each `prepare` and `release`
    bool m_isReading = false;
};

} // namespace lumacap::x11
