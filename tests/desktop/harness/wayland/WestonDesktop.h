#pragma once

#include "harness/wayland/WaylandDesktop.h"

namespace lumacap::harness {

/// The make of a weston session.
struct WestonOptions {
    QSize pixels{1280, 800};
    int scale = 1;
};

/// A headless weston: a compositor that offers what every one must and no more, not even a seat, so
/// that nobody sits before it.
class WestonDesktop final : public WaylandDesktop {
public:
    /// Comes back when it is up; throws when it can't be.
    explicit WestonDesktop(const WestonOptions &options = {});
    Q_DISABLE_COPY_MOVE(WestonDesktop)
    ~WestonDesktop() override;

    std::vector<TestOutput> outputs() override;
    /// Throws: it has no seat.
    Input &input() override;
    QImage look(const QString &output) override;
    /// By a full-screen window: it has no layers.
    void paint(const QString &output, const QImage &picture) override;
    /// Ends the compositor under its clients.
    void end() const { m_weston->terminate(); }

private:
    WestonOptions m_options;
    Process *m_weston = nullptr;
};

} // namespace lumacap::harness
