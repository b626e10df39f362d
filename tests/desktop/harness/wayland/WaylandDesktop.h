#pragma once

#include "harness/TestDesktop.h"

#include <map>

namespace lumacap::harness {

/// A desktop of a Wayland compositor.
class WaylandDesktop : public TestDesktop {
public:
    Q_DISABLE_COPY_MOVE(WaylandDesktop)

    /// Has a program show `picture` on the output, by a layer under all windows.
    void paint(const QString &output, const QImage &picture) override;
    void openWindow(const WindowLook &look) override { startWindow(look); }
    /// Starts the program of the window, and waits until it is shown.
    Process &startWindow(const WindowLook &look);
    /// The path of the compositor's socket.
    QString socket() const;

    QList<QByteArray> clipboardTypes() override;
    QByteArray clipboardBytes(const char *type, std::chrono::milliseconds limit) override;

protected:
    using TestDesktop::TestDesktop;

    /// Has a program show `picture` as its own "background" or "full-screen" window.
    Process &show(const QImage &picture, const QStringList &kind);

private:
    std::map<QString, Process *> m_painted; // by output; owned by the desktop
};

} // namespace lumacap::harness
