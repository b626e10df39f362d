#pragma once

#include "harness/TestDesktop.h"
#include "harness/XServer.h"

#include <QImage>

#include <memory>
#include <vector>

namespace lumacap::harness {

class PaintedScreen;
class PlainWindow;

/// Who manages windows.
enum class WindowManager { Nobody, Openbox, Xfwm4 };

/// The make of a desktop.
struct DesktopOptions {
    ServerOptions server{};
    WindowManager windowManager = WindowManager::Openbox;
};

/// A desktop on an X server, with a window manager.
class PrivateDesktop final : public TestDesktop {
public:
    /// Comes back when the desktop is up; throws when it can't be.
    explicit PrivateDesktop(const DesktopOptions &options = {});
    Q_DISABLE_COPY_MOVE(PrivateDesktop)
    ~PrivateDesktop() override;

    XServer &server() { return *m_server; }
    /// Who owns the X selection `name`, as a window id; 0 when nobody does.
    std::uint32_t selectionOwner(const char *name) const;

    std::vector<TestOutput> outputs() override;
    Input &input() override;
    QImage look(const QString &output) override;
    void paint(const QString &output, const QImage &picture) override;
    void openWindow(const WindowLook &look) override;
    void end() override { m_server->end(); }
    QList<QByteArray> clipboardTypes() override;
    QByteArray clipboardBytes(const char *type, std::chrono::milliseconds limit) override;

private:
    void startWindowManager(WindowManager windowManager);
    QRect areaOf(const QString &output);

    std::unique_ptr<XServer> m_server;
    std::vector<Monitor> m_monitors;
    std::unique_ptr<Input> m_input;
    QImage m_picture;
    std::unique_ptr<PaintedScreen> m_screen;
    std::vector<std::unique_ptr<PlainWindow>> m_windows;
};

} // namespace lumacap::harness
