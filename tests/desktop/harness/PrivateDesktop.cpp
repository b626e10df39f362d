#include "harness/PrivateDesktop.h"

#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <ranges>
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

PrivateDesktop::PrivateDesktop(const DesktopOptions &options)
    : m_root(u"/tmp/desktop-test-XXXXXX"_s)
    , m_environment(bareEnvironment())
{
    if (!m_root.isValid())
        throw std::runtime_error("no folder for the desktop");
    static constexpr std::pair<const char *, QLatin1StringView> folders[]{
        {"HOME", "home"_L1},
        {"XDG_RUNTIME_DIR", "run"_L1},
        {"XDG_CONFIG_HOME", "config"_L1},
        {"XDG_DATA_HOME", "data"_L1},
        {"XDG_CACHE_HOME", "cache"_L1},
        {"XDG_STATE_HOME", "state"_L1},
        {"TMPDIR", "tmp"_L1}};
    for (const auto &[variable, name] : folders)
        m_environment[variable] = folder(name).toLocal8Bit();
    folder(u"home/Desktop"_s);
    folder(u"log"_s);
    QFile::setPermissions(folder(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    // The settings service of Xfce serves the clipboard manager.
    m_bus = std::make_unique<SessionBus>(folder(u"log"_s), folder(u"run"_s),
                                         QStringList{u"org.xfce.Xfconf"_s, u"org.a11y.Bus"_s},
                                         m_environment);
    m_environment["DBUS_SESSION_BUS_ADDRESS"] = m_bus->address();
    m_server = std::make_unique<XServer>(options.server, folder(u"log"_s), m_environment);
    m_environment["DISPLAY"] = m_server->display();
    m_environment["XDG_SESSION_TYPE"] = "x11";
    startWindowManager(options.windowManager);
}

PrivateDesktop::~PrivateDesktop()
{
    // Clients first and newest first, so that none meets a desktop without its server.
    for (const auto &process : m_processes | std::views::reverse)
        process->terminate();
}

QString PrivateDesktop::folder(const QString &name) const
{
    const QString path = m_root.filePath(name);
    QDir().mkpath(path);
    return path;
}

QString PrivateDesktop::newLog(const QString &name)
{
    return u"%1/%2-%3"_s.arg(folder(u"log"_s), name).arg(++m_logs);
}

Process &PrivateDesktop::start(const QString &name, const QStringList &command)
{
    m_processes.push_back(std::make_unique<Process>(command, m_environment, newLog(name)));
    return *m_processes.back();
}

void PrivateDesktop::stop(const Process &process)
{
    process.terminate();
    std::erase_if(m_processes, [&process](const auto &mine) { return mine.get() == &process; });
}

Answer PrivateDesktop::ask(const QStringList &command, std::chrono::milliseconds limit)
{
    return run(command, m_environment, newLog(u"answer"_s), limit);
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
