#include "app/Desktop.h"

#include "app/AbsentServices.h"
#include "app/FallbackScreenCapture.h"
#include "app/GnomeBackends.h"
#include "app/KWinBackends.h"
#include "app/LateHotkeyService.h"
#include "app/PortalBackends.h"
#include "app/Session.h"
#include "app/SwayBackends.h"
#include "app/WaylandBackends.h"
#include "app/X11Backends.h"
#include "platform/freedesktop/AutostartLoginItem.h"
#include "platform/freedesktop/CanberraSoundPlayer.h"
#include "platform/freedesktop/DesktopEntryNames.h"
#include "platform/freedesktop/IniDefaultsStore.h"
#include "platform/freedesktop/SoftwareCentreUpdater.h"
#include "platform/freedesktop/ToolkitFolderPanel.h"
#include "platform/freedesktop/tray/TrayStatusItem.h"
#include "platform/wayland/WaylandScreens.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QStandardPaths>

#include <array>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

/// One way to have a service: offered by this session or not, and made if so, of the session and of
/// the services it `Needs`.
template <class Service, class... Needs>
struct Row {
    std::string_view name;
    bool (*isOffered)(const Session &session);
    std::unique_ptr<Service> (*make)(const Session &session, const Needs &...needs);
};

bool always(const Session & /*session*/)
{
    return true;
}

template <class Service, class Backend, class... Needs>
std::unique_ptr<Service> plain(const Session & /*session*/, const Needs &.../*needs*/)
{
    return std::make_unique<Backend>();
}

/// The first row that the session offers, or the one that the environment names if it is offered.
/// Every table ends with a row that always is.
template <class Rows, class... Needs>
auto choose(const Rows &rows, const Session &session, const char *variable, const Needs &...needs)
{
    const QByteArray forced = qgetenv(variable);
    for (const auto &row : rows) {
        const bool isAskedFor = forced.isEmpty() || row.name == std::string_view(forced);
        if (isAskedFor && row.isOffered(session))
            return row.make(session, needs...);
    }
    return rows.back().make(session, needs...);
}

/// By the portal where the desktop refuses `make`'s way, if there is a portal.
template <auto make>
std::unique_ptr<ScreenCapture> orPortal(const Session &session)
{
    if (!portal::isOffered(session))
        return make(session);
    return std::make_unique<FallbackScreenCapture>(make(session), portal::screenCapture(session));
}

constexpr auto screenCaptures = std::to_array<Row<ScreenCapture>>({
    {"x11", x11::isOffered, x11::screenCapture},
    {"kwin", kwin::takesPictures, orPortal<kwin::screenCapture>},
    {"mutter", gnome::castsScreens, orPortal<gnome::screenCapture>},
    {"screencopy", wayland::copiesScreens, wayland::screencopy},
    {"portal", portal::isOffered, portal::screenCapture}, // may ask the person first
    {"none", always, plain<ScreenCapture, AbsentScreenCapture>},
});

std::unique_ptr<wayland::PointerFinder> nobody(const Session & /*session*/)
{
    return nullptr;
}

/// For sessions with a Wayland compositor.
constexpr auto pointerFinders = std::to_array<Row<wayland::PointerFinder>>({
    {"kwin", kwin::isOffered, kwin::pointerFinder},
    {"sway", sway::isOffered, sway::pointerFinder},
    {"mutter", gnome::castsScreens, gnome::pointerFinder},
    {"probe", wayland::probesPointer, wayland::probedPointer},
    {"none", always, nobody},
});

std::unique_ptr<Screens> waylandScreens(const Session &session)
{
    return std::make_unique<wayland::WaylandScreens>(
        *session.outputs(), choose(pointerFinders, session, "LUMACAP_POINTER_FINDER"));
}

constexpr auto screensRows = std::to_array<Row<Screens>>({
    {"x11", x11::isOffered, x11::screens},
    {"wayland", wayland::isOffered, waylandScreens},
    {"none", always, plain<Screens, AbsentScreens>},
});

constexpr auto windowLists = std::to_array<Row<WindowList, ApplicationNames>>({
    {"x11", x11::isOffered, x11::windowList},
    {"kwin", kwin::isOffered, kwin::windowList},
    {"sway", sway::isOffered, sway::windowList},
    {"none", always, plain<WindowList, AbsentWindowList, ApplicationNames>},
});

constexpr auto overlaySurfaces = std::to_array<Row<OverlaySurface>>({
    {"x11", x11::showsWindows, x11::overlaySurface},
    {"layer-shell", wayland::hasLayerShell, wayland::layerShellSurface},
    {"full-screen", wayland::showsWindows, wayland::fullScreenSurface},
    {"none", always, plain<OverlaySurface, AbsentOverlaySurface>},
});

/// Of desktops whose portal has no shortcuts.
constexpr auto hotkeysWithoutPortal = std::to_array<Row<HotkeyService>>({
    {"gnome", gnome::keepsKeybindings, gnome::hotkeyService},
    {"none", always, plain<HotkeyService, AbsentHotkeyService>},
});

QCoro::Task<std::unique_ptr<HotkeyService>> portalHotkeysOrNext(const Session *session)
{
    auto ofPortal = co_await portal::hotkeyService();
    if (ofPortal != nullptr)
        co_return ofPortal;
    co_return choose(hotkeysWithoutPortal, *session, "LUMACAP_HOTKEY_SERVICE");
}

std::unique_ptr<HotkeyService> portalHotkeys(const Session &session)
{
    return std::make_unique<LateHotkeyService>(portalHotkeysOrNext(&session));
}

constexpr auto hotkeyServices = std::to_array<Row<HotkeyService>>({
    {"x11", x11::isOffered, x11::hotkeyService},
    {"kwin", kwin::givesShortcuts, kwin::hotkeyService},
    {"sway", sway::isOffered, sway::hotkeyService},
    {"portal", portal::isOffered, portalHotkeys},
    {"gnome", gnome::keepsKeybindings, gnome::hotkeyService},
    {"none", always, plain<HotkeyService, AbsentHotkeyService>},
});

constexpr auto pasteboards = std::to_array<Row<Pasteboard>>({
    {"x11", x11::isOffered, x11::pasteboard},
    {"data-control", wayland::controlsData, wayland::dataControl},
    {"xwayland", gnome::runsXServer, gnome::pasteboard},
    {"toolkit", wayland::copiesFromWindows, wayland::toolkitPasteboard}, // for want of a better
    {"none", always, plain<Pasteboard, AbsentPasteboard>},
});

QString settingsPath()
{
    const QString home = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(home).filePath(u"Lumacap/Lumacap.conf"_s);
}

/// Installed beside the program, or made by the build that the program runs from.
QString soundPath()
{
    const QString name = u"lumacap/screen-capture.wav"_s;
    QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(u"../share/"_s + name);
    if (QFile::exists(beside))
        return beside;
    const QString installed = QStandardPaths::locate(QStandardPaths::GenericDataLocation, name);
    return installed.isEmpty() ? QStringLiteral(LUMACAP_BUILD_DATA_DIR "/screen-capture.wav")
                               : installed;
}

std::unique_ptr<StatusItem> trayItem(const Session &session)
{
    const auto ownWindows = x11::isOffered(session) ? freedesktop::OwnWindows::Allowed
                                                    : freedesktop::OwnWindows::Refused;
    return std::make_unique<freedesktop::TrayStatusItem>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"tray"_s), ownWindows);
}

} // namespace

std::unique_ptr<ScreenCapture> makeScreenCapture(const Session &session)
{
    return choose(screenCaptures, session, "LUMACAP_SCREEN_CAPTURE");
}

Desktop makeDesktop(const Session &session)
{
    Desktop desktop;
    desktop.defaults = std::make_unique<freedesktop::IniDefaultsStore>(settingsPath());
    desktop.loginItem = std::make_unique<freedesktop::AutostartLoginItem>(
        QCoreApplication::applicationFilePath(),
        freedesktop::AutostartSurroundings::ofThisSession());
    desktop.screens = choose(screensRows, session, "LUMACAP_SCREENS");
    desktop.screenCapture = makeScreenCapture(session);
    desktop.applicationNames = std::make_unique<freedesktop::DesktopEntryNames>(
        freedesktop::DesktopEntrySurroundings::ofThisSession());
    desktop.windowList =
        choose(windowLists, session, "LUMACAP_WINDOW_LIST", *desktop.applicationNames);
    desktop.overlaySurface = choose(overlaySurfaces, session, "LUMACAP_OVERLAY_SURFACE");
    desktop.hotkeyService = choose(hotkeyServices, session, "LUMACAP_HOTKEY_SERVICE");
    desktop.folderPanel = std::make_unique<freedesktop::ToolkitFolderPanel>();
    desktop.pasteboard = choose(pasteboards, session, "LUMACAP_PASTEBOARD");
    desktop.soundPlayer = std::make_unique<freedesktop::CanberraSoundPlayer>(soundPath());
    desktop.statusItem = trayItem(session);
    desktop.updater = std::make_unique<freedesktop::SoftwareCentreUpdater>();
    return desktop;
}

} // namespace lumacap
