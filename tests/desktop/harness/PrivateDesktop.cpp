#include "harness/PrivateDesktop.h"

#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/PlainWindow.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"
#include "harness/XInput.h"

#include <QPainter>

#include <algorithm>
#include <stdexcept>

#include <xcb/xcb.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// Shows a window and takes it away again. A window manager that has told that it is there still
/// loses windows shown while it starts.
bool canShowAWindow(const XConnection &connection)
{
    xcb_connection_t *const raw = connection.raw();
    const std::uint32_t window = xcb_generate_id(raw);
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(raw, window);
    const bool isShown =
        waitFor([&] { return connection.isViewable(window); }, std::chrono::milliseconds(100));
    xcb_destroy_window(raw, window);
    connection.finish();
    return isShown && waitFor([&connection] {
               return connection.property(connection.root(), "_NET_CLIENT_LIST").isEmpty();
           });
}

} // namespace

// The settings service of Xfce serves the clipboard manager.
PrivateDesktop::PrivateDesktop(const DesktopOptions &options)
    : TestDesktop({u"org.xfce.Xfconf"_s, u"org.a11y.Bus"_s})
    , m_server(std::make_unique<XServer>(options.server, folder(u"log"_s), environment()))
    , m_monitors(options.server.monitors)
{
    if (m_monitors.empty())
        m_monitors.push_back({u"screen"_s, {{}, options.server.size}, Role::Primary});
    std::ranges::stable_partition(
        m_monitors, [](const Monitor &monitor) { return monitor.role == Role::Primary; });
    set("DISPLAY", m_server->display());
    set("XDG_SESSION_TYPE", "x11");
    startWindowManager(options.windowManager);
}

PrivateDesktop::~PrivateDesktop()
{
    m_windows.clear();
    m_screen.reset();
    m_input.reset();
    stopAll(); // before their server
}

std::vector<TestOutput> PrivateDesktop::outputs()
{
    std::vector<TestOutput> outputs;
    for (const Monitor &monitor : m_monitors)
        outputs.push_back({monitor.name, monitor.area.size(), monitor.area});
    return outputs;
}

QRect PrivateDesktop::areaOf(const QString &output)
{
    const auto found = std::ranges::find(m_monitors, output, &Monitor::name);
    if (found == m_monitors.end())
        throw std::invalid_argument("no output " + output.toStdString());
    return found->area;
}

Input &PrivateDesktop::input()
{
    if (!m_input)
        m_input = std::make_unique<XInput>(m_server->display());
    return *m_input;
}

QImage PrivateDesktop::look(const QString &output)
{
    return shownOn(m_server->display(), areaOf(output));
}

void PrivateDesktop::paint(const QString &output, const QImage &picture)
{
    if (m_picture.isNull()) {
        m_picture = QImage(XConnection(m_server->display()).size(), QImage::Format_RGB32);
        m_picture.fill(Qt::black);
    }
    QPainter(&m_picture).drawImage(areaOf(output).topLeft(), picture);
    if (m_screen) {
        m_screen->paint(m_picture);
        return;
    }
    m_screen = std::make_unique<PaintedScreen>(m_server->display(), m_picture);
    m_screen->lower();
}

void PrivateDesktop::openWindow(const WindowLook &look)
{
    constexpr QPoint place(150, 120);
    auto window = std::make_unique<PlainWindow>(m_server->display(), QRect(place, look.size));
    window->setTitle(look.title.toUtf8());
    const QByteArray name = look.appId.toUtf8();
    window->setText("WM_CLASS", "STRING", name + '\0' + name + '\0');
    window->renounceDecoration();
    window->show();
    window->requireManaged();
    m_windows.push_back(std::move(window));
}

QList<QByteArray> PrivateDesktop::clipboardTypes()
{
    if (selectionOwner("CLIPBOARD") == 0)
        return {};
    return harness::clipboardTypes(*this);
}

QByteArray PrivateDesktop::clipboardBytes(const char *type, std::chrono::milliseconds limit)
{
    return harness::clipboardBytes(*this, type, limit);
}

std::uint32_t PrivateDesktop::selectionOwner(const char *name) const
{
    return XConnection(m_server->display()).selectionOwner(name);
}

void PrivateDesktop::startWindowManager(WindowManager windowManager)
{
    switch (windowManager) {
    case WindowManager::Nobody:
        return;
    case WindowManager::Openbox:
        start(u"openbox"_s, {u"openbox"_s, u"--sm-disable"_s});
        break;
    case WindowManager::Xfwm4:
        start(u"xfwm4"_s, {u"xfwm4"_s, u"--compositor=off"_s});
        break;
    }
    const XConnection connection(m_server->display());
    require("the window manager", [&connection] {
        return !connection.property(connection.root(), "_NET_SUPPORTING_WM_CHECK").isEmpty()
            && canShowAWindow(connection);
    });
}

} // namespace lumacap::harness
