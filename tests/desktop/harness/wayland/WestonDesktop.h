#pragma once

#include "harness/XInput.h"
#include "harness/XServer.h"
#include "harness/wayland/WaylandDesktop.h"

#include <memory>

namespace lumacap::harness {

/// Whether somebody sits before it.
enum class Seat { Absent, Present };

/// The make of a weston session.
struct WestonOptions {
    QSize pixels{1280, 800};
    int scale = 1;
    Seat seat = Seat::Absent;
};

/// A weston: a compositor that offers what every one must and no more. Headless it has not even a
/// seat; for one it is the only window of an X server that its programs know nothing of.
class WestonDesktop final : public WaylandDesktop {
public:
    /// Comes back when it is up; throws when it can't be.
    explicit WestonDesktop(const WestonOptions &options = {});
    Q_DISABLE_COPY_MOVE(WestonDesktop)
    ~WestonDesktop() override;

    std::vector<TestOutput> outputs() override;
    /// Throws where it has no seat.
    Input &input() override;
    QImage look(const QString &output) override;
    /// By a full-screen window: it has no layers.
    void paint(const QString &output, const QImage &picture) override;
    void end() override { m_weston->terminate(); }

private:
    QStringList backend();

    WestonOptions m_options;
    std::unique_ptr<XServer> m_server;
    std::unique_ptr<XInput> m_input;
    Process *m_weston = nullptr;
};

} // namespace lumacap::harness
