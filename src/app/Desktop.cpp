#include "app/Desktop.h"

#include "app/AbsentServices.h"
#include "app/Session.h"
#include "platform/freedesktop/AutostartLoginItem.h"
#include "platform/freedesktop/CanberraSoundPlayer.h"
#include "platform/freedesktop/IniDefaultsStore.h"
#include "platform/freedesktop/SoftwareCentreUpdater.h"
#include "platform/freedesktop/tray/TrayStatusItem.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QStandardPaths>

#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

/// One way to have a service: offered by this session or not, and made if so.
template <class Service>
struct Row {
    std::string_view name;
    bool (*isOffered)(const Session &session);
    std::unique_ptr<Service> (*make)(const Session &session);
};

bool always(const Session & /*session*/)
{
    return true;
}

bool hasX11(const Session &session)
{
    return session.x11() != nullptr;
}

template <class Service, class Backend>
std::unique_ptr<Service> overX11(const Session &session)
{
    return std::make_unique<Backend>(*session.x11());
}

template <class Service, class Backend>
std::unique_ptr<Service> plain(const Session & /*session*/)
{
    return std::make_unique<Backend>();
}

constexpr std::array screenCaptures{
    Row<ScreenCapture>{"x11", hasX11, overX11<ScreenCapture, x11::X11ScreenCapture>},
    Row<ScreenCapture>{"none", always, plain<ScreenCapture, AbsentScreenCapture>},
};

constexpr std::array screensRows{
    Row<Screens>{"x11", hasX11, overX11<Screens, x11::X11Screens>},
    Row<Screens>{"none", always, plain<Screens, AbsentScreens>},
};

constexpr std::array pasteboards{
    Row<Pasteboard>{"x11", hasX11, overX11<Pasteboard, x11::X11Pasteboard>},
    Row<Pasteboard>{"none", always, plain<Pasteboard, AbsentPasteboard>},
};

/// The first row that the session offers, or the one that the environment names if it is offered.
/// Every table ends with a row that always is.
template <class Rows>
auto choose(const Rows &rows, const Session &session, const char *variable)
{
    const QByteArray forced = qgetenv(variable);
    for (const auto &row : rows) {
        const bool isAskedFor = forced.isEmpty() || row.name == std::string_view(forced);
        if (isAskedFor && row.isOffered(session))
            return row.make(session);
    }
    return rows.back().make(session);
}

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
    desktop.pasteboard = choose(pasteboards, session, "LUMACAP_PASTEBOARD");
    desktop.soundPlayer = std::make_unique<freedesktop::CanberraSoundPlayer>(soundPath());
    desktop.statusItem = trayItem(session);
    desktop.updater = std::make_unique<freedesktop::SoftwareCentreUpdater>();
    return desktop;
}

} // namespace lumacap
