#include "app/Desktop.h"

#include "app/AbsentServices.h"
#include "app/HotkeyCommands.h"
#include "app/Session.h"
#include "platform/freedesktop/ApplicationId.h"
#include "platform/freedesktop/AutostartLoginItem.h"
#include "platform/freedesktop/CanberraSoundPlayer.h"
#include "platform/freedesktop/DesktopEntryNames.h"
#include "platform/freedesktop/IniDefaultsStore.h"
#include "platform/freedesktop/SoftwareCentreUpdater.h"
#include "platform/freedesktop/ToolkitFolderPanel.h"
#include "platform/freedesktop/tray/TrayStatusItem.h"
#include "platform/gnome/FrameReader.h"
#include "platform/gnome/GnomeHotkeyService.h"
#include "platform/gnome/Module.h"
#include "platform/gnome/MutterScreenCapture.h"
#include "platform/kwin/capture/KWinScreenCapture.h"
#include "platform/kwin/capture/Screenshot.h"
#include "platform/kwin/hotkeys/KWinHotkeyService.h"
#include "platform/kwin/pointer/KWinPointerFinder.h"
#include "platform/kwin/windows/KWinWindowList.h"
#include "platform/portal/Portal.h"
#include "platform/portal/PortalScreenCapture.h"
#include "platform/wayland/ProbePointerFinder.h"
#include "platform/wayland/WaylandScreens.h"
#include "platform/wayland/clipboard/DataControlPasteboard.h"
#include "platform/wayland/overlay/FullScreenOverlaySurface.h"
#include "platform/wayland/overlay/LayerShellOverlaySurface.h"
#include "platform/wlroots/ScreencopyScreenCapture.h"
#include "platform/wlroots/sway/Ipc.h"
#include "platform/wlroots/sway/SwayPointerFinder.h"
#include "platform/wlroots/sway/SwayWindowList.h"
#include "platform/wlroots/sway/hotkeys/SwayHotkeyService.h"
#include "platform/x11/X11OverlaySurface.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/hotkeys/X11HotkeyService.h"
#include "platform/x11/windows/X11WindowList.h"
#include "platform/xcb/Connection.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QGuiApplication>
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

bool hasX11(const Session &session)
{
    return session.x11() != nullptr;
}

/// Also where the toolkit shows its windows: its backend may have been chosen by hand.
bool hasX11Windows(const Session &session)
{
    return hasX11(session) && QGuiApplication::platformName() == u"xcb"_s;
}

template <class Service, class Backend, class... Needs>
std::unique_ptr<Service> overX11(const Session &session, const Needs &...needs)
{
    return std::make_unique<Backend>(*session.x11(), needs...);
}

template <class Service, class Backend, class... Needs>
std::unique_ptr<Service> plain(const Session & /*session*/, const Needs &.../*needs*/)
{
    return std::make_unique<Backend>();
}

bool copiesScreens(const Session &session)
{
    return session.wayland() != nullptr
        && wlroots::ScreencopyScreenCapture::isOffered(*session.wayland());
}

std::unique_ptr<ScreenCapture> screencopy(const Session &session)
{
    return std::make_unique<wlroots::ScreencopyScreenCapture>(*session.wayland(),
                                                              *session.outputs());
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

bool hasWayland(const Session &session)
{
    return session.wayland() != nullptr;
}

bool hasSway(const Session &session)
{
    return hasWayland(session) && sway::Ipc::isOffered(*session.wayland());
}

/// Only while it can take pictures has it the name.
bool hasKWinScreenshots(const Session &session)
{
    return hasWayland(session) && session.hasBusName(kwin::screenshotService);
}

std::unique_ptr<ScreenCapture> kwinScreenCapture(const Session &session)
{
    return std::make_unique<kwin::KWinScreenCapture>(*session.outputs(),
                                                     QDBusConnection::sessionBus());
}

bool hasMutterCasts(const Session &session)
{
    return hasWayland(session) && session.hasBusName(u"org.gnome.Mutter.ScreenCast"_s)
        && gnome::Module().isLoaded();
}

std::unique_ptr<ScreenCapture> capturesOfMutter(const Session &session)
{
    return std::make_unique<gnome::MutterScreenCapture>(
        QDBusConnection::sessionBus(), *session.outputs(), gnome::Module().makeFrameReader());
}

bool hasPortal(const Session &session)
{
    return hasWayland(session) && session.hasBusName(portal::portalName);
}

std::unique_ptr<ScreenCapture> portalScreenCapture(const Session &session)
{
    return std::make_unique<portal::PortalScreenCapture>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal-screenshot"_s),
        freedesktop::applicationId, *session.outputs());
}

constexpr std::array screenCaptures{
    Row<ScreenCapture>{"mutter", hasMutterCasts, capturesOfMutter},
    Row<ScreenCapture>{"kwin", hasKWinScreenshots, kwinScreenCapture},
    Row<ScreenCapture>{"x11", hasX11, overX11<ScreenCapture, x11::X11ScreenCapture>},
    Row<ScreenCapture>{"screencopy", copiesScreens, screencopy},
    Row<ScreenCapture>{"portal", hasPortal, portalScreenCapture}, // may ask the person first
    Row<ScreenCapture>{"none", always, plain<ScreenCapture, AbsentScreenCapture>},
};

bool hasKWin(const Session &session)
{
    return hasWayland(session) && session.hasBusName(u"org.kde.KWin"_s);
}

std::unique_ptr<wayland::PointerFinder> kwinPointer(const Session & /*session*/)
{
    return std::make_unique<kwin::KWinPointerFinder>(QDBusConnection::sessionBus());
}

bool canCoverOutputs(const Session &session)
{
    return wayland::ProbePointerFinder::isOffered(*session.wayland());
}

std::unique_ptr<wayland::PointerFinder> probedPointer(const Session &session)
{
    return std::make_unique<wayland::ProbePointerFinder>(*session.wayland(), *session.outputs());
}

std::unique_ptr<wayland::PointerFinder> swayPointer(const Session &session)
{
    return std::make_unique<sway::SwayPointerFinder>(
        sway::Ipc::path(), canCoverOutputs(session) ? probedPointer(session) : nullptr);
}

std::unique_ptr<wayland::PointerFinder> nobody(const Session & /*session*/)
{
    return nullptr;
}

/// For sessions with a Wayland compositor.
constexpr std::array pointerFinders{
    Row<wayland::PointerFinder>{"kwin", hasKWin, kwinPointer},
    Row<wayland::PointerFinder>{"sway", hasSway, swayPointer},
    Row<wayland::PointerFinder>{"probe", canCoverOutputs, probedPointer},
    Row<wayland::PointerFinder>{"none", always, nobody},
};

std::unique_ptr<Screens> waylandScreens(const Session &session)
{
    return std::make_unique<wayland::WaylandScreens>(
        *session.outputs(), choose(pointerFinders, session, "LUMACAP_POINTER_FINDER"));
}

constexpr std::array screensRows{
    Row<Screens>{"x11", hasX11, overX11<Screens, x11::X11Screens>},
    Row<Screens>{"wayland", hasWayland, waylandScreens},
    Row<Screens>{"none", always, plain<Screens, AbsentScreens>},
};

std::unique_ptr<WindowList> swayWindows(const Session &session, const ApplicationNames &names)
{
    return std::make_unique<sway::SwayWindowList>(*session.outputs(), names);
}

using WindowListRow = Row<WindowList, ApplicationNames>;
std::unique_ptr<WindowList> kwinWindowList(const Session &session, const ApplicationNames &names)
{
    return std::make_unique<kwin::KWinWindowList>(*session.outputs(), names,
                                                  QDBusConnection::sessionBus());
}

constexpr std::array windowLists{
    WindowListRow{"kwin", hasKWin, kwinWindowList},
    WindowListRow{"x11", hasX11, overX11<WindowList, x11::X11WindowList, ApplicationNames>},
    WindowListRow{"sway", hasSway, swayWindows},
    WindowListRow{"none", always, plain<WindowList, AbsentWindowList, ApplicationNames>},
};

bool hasLayerShell(const Session &session)
{
    return hasWayland(session) && wayland::LayerShellOverlaySurface::isOffered(*session.wayland());
}

bool hasWaylandWindows(const Session &session)
{
    return hasWayland(session) && wayland::FullScreenOverlaySurface::isOffered();
}

template <class Backend>
std::unique_ptr<OverlaySurface> overOutputs(const Session &session)
{
    return std::make_unique<Backend>(*session.outputs());
}

constexpr std::array overlaySurfaces{
    Row<OverlaySurface>{"x11", hasX11Windows, overX11<OverlaySurface, x11::X11OverlaySurface>},
    Row<OverlaySurface>{"layer-shell", hasLayerShell,
                        overOutputs<wayland::LayerShellOverlaySurface>},
    Row<OverlaySurface>{"full-screen", hasWaylandWindows,
                        overOutputs<wayland::FullScreenOverlaySurface>},
    Row<OverlaySurface>{"none", always, plain<OverlaySurface, AbsentOverlaySurface>},
};

std::unique_ptr<HotkeyService> hotkeysOverX11(const Session & /*session*/)
{
    auto connection = xcb::Connection::open();
    if (!connection) // the server is going at this moment
        return std::make_unique<AbsentHotkeyService>();
    return std::make_unique<x11::X11HotkeyService>(std::move(*connection));
}

std::unique_ptr<HotkeyService> swayHotkeys(const Session &session)
{
    return std::make_unique<sway::SwayHotkeyService>(
        std::make_unique<sway::SeatKeymap>(*session.wayland()));
}

bool hasKWinShortcuts(const Session &session)
{
    return hasKWin(session) && session.hasBusName(u"org.kde.kglobalaccel"_s);
}

std::unique_ptr<HotkeyService> hotkeysOverKWin(const Session &session)
{
    kwin::KWinHotkeyService::Actions actions;
    for (const HotkeyCommandRow &entry : hotkeyCommands)
        actions.insert({entry.id, {row(entry.command).name, entry.title}});
    return std::make_unique<kwin::KWinHotkeyService>(*session.wayland(),
                                                     QDBusConnection::sessionBus(), actions);
}

bool hasGnomeShortcuts(const Session &session)
{
    return hasWayland(session) && session.hasBusName(u"org.gnome.SettingsDaemon.MediaKeys"_s)
        && gnome::Module().makeKeybindings() != nullptr;
}

std::unique_ptr<HotkeyService> hotkeysOfGnome(const Session & /*session*/)
{
    std::vector<gnome::HotkeyCommand> commands;
    for (const HotkeyCommandRow &entry : hotkeyCommands)
        commands.push_back({entry.id, row(entry.command).name, u"Lumacap: "_s + entry.title});
    return std::make_unique<gnome::GnomeHotkeyService>(gnome::Module().makeKeybindings(),
                                                       QCoreApplication::applicationFilePath(),
                                                       std::move(commands));
}

constexpr std::array hotkeyServices{
    Row<HotkeyService>{"kwin", hasKWinShortcuts, hotkeysOverKWin},
    Row<HotkeyService>{"x11", hasX11, hotkeysOverX11},
    Row<HotkeyService>{"sway", hasSway, swayHotkeys},
    Row<HotkeyService>{"gnome", hasGnomeShortcuts, hotkeysOfGnome},
    Row<HotkeyService>{"none", always, plain<HotkeyService, AbsentHotkeyService>},
};

bool controlsData(const Session &session)
{
    return hasWayland(session) && wayland::DataControlPasteboard::isOffered(*session.wayland());
}

std::unique_ptr<Pasteboard> dataControl(const Session &session)
{
    return std::make_unique<wayland::DataControlPasteboard>(*session.wayland());
}

constexpr std::array pasteboards{
    Row<Pasteboard>{"x11", hasX11, overX11<Pasteboard, x11::X11Pasteboard>},
    Row<Pasteboard>{"data-control", controlsData, dataControl},
    Row<Pasteboard>{"none", always, plain<Pasteboard, AbsentPasteboard>},
};

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
    const auto ownWindows =
        hasX11(session) ? freedesktop::OwnWindows::Allowed : freedesktop::OwnWindows::Refused;
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
