#include "app/AppDelegate.h"

#include "app/Desktop.h"
#include "app/HotkeyCommands.h"
#include "app/MemoryAtRest.h"
#include "app/StatusBarController.h"
#include "capture/CaptureEngine.h"
#include "capture/ImageSaver.h"
#include "graphics/Fatal.h"
#include "overlay/OverlayWindowController.h"
#include "platform/ScreenCapture.h"
#include "platform/Spawn.h"
#include "preferences/HotkeyManager.h"
#include "preferences/storage/PreferencesStorage.h"
#include "preferences/window/PreferencesWindowController.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <tuple>

using namespace std::chrono_literals;

namespace lumacap {

namespace {

/// For how long the end of the agent is put off for captures: one that a server answers is long
/// done.
constexpr auto captureLimit = 15s;

} // namespace

AppDelegate::AppDelegate(Desktop &desktop, PreferencesStorage &preferences)
    : m_desktop(desktop)
    , m_preferences(preferences)
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    m_updaterController = m_desktop.updater.get();
    m_updaterController->start();
    m_imageSaver =
        std::make_unique<ImageSaver>(*m_desktop.pasteboard, *m_desktop.soundPlayer, m_preferences);
    m_captureEngine = std::make_unique<CaptureEngine>(*m_desktop.screenCapture, *m_desktop.screens,
                                                      *m_imageSaver);

    m_overlayController = std::make_unique<OverlayWindowController>(
        OverlayServices{*m_desktop.screens, *m_desktop.windowList, *m_desktop.overlaySurface,
                        *m_desktop.pasteboard, *m_desktop.soundPlayer, m_preferences},
        *m_captureEngine);

    m_preferencesController = std::make_unique<PreferencesWindowController>(
        PreferencesServices{m_preferences, *m_desktop.hotkeyService, *m_desktop.folderPanel},
        [self = QPointer(this)] {
            if (self)
                self->registerHotkeys();
        });
    m_hotkeyManager = HotkeyManager::make(*m_desktop.hotkeyService);
    registerHotkeys();

    const auto performing = [self = QPointer(this)](Command command) {
        return [self, command] {
            if (self)
                self->performFromMenu(command);
        };
    };
    m_statusBarController = std::make_unique<StatusBarController>(
        *m_desktop.statusItem, performing(Command::FullScreen), performing(Command::Selection),
        performing(Command::Preferences), performing(Command::CheckForUpdates),
        performing(Command::Quit));
    m_statusBarController->updateMenuShortcutLabels(m_preferences.fullScreenHotkey(),
                                                    m_preferences.selectionHotkey());
}

void AppDelegate::registerHotkeys()
{
    if (!m_hotkeyManager)
        fatal("shortcuts are registered before launch finished");
    const auto performing = [self = QPointer(this)](Command command) {
        return [self, command] {
            if (self)
                self->perform(command);
        };
    };
    m_hotkeyManager->unregisterAll();
    m_hotkeyManager->registerHotKey(hotkey::fullScreen, m_preferences.fullScreenHotkey(),
                                    performing(Command::FullScreen));
    m_hotkeyManager->registerHotKey(hotkey::selection, m_preferences.selectionHotkey(),
                                    performing(Command::Selection));
    if (m_statusBarController)
        m_statusBarController->updateMenuShortcutLabels(m_preferences.fullScreenHotkey(),
                                                        m_preferences.selectionHotkey());
}

void AppDelegate::performFromMenu(Command command)
{
    if (command == Command::FullScreen && !m_isTerminating)
        spawn(captureFullScreen(ChosenIn::Menu));
    else if (command == Command::Selection && !m_isTerminating)
        spawn(selectFromMenu());
    else
        perform(command);
}

void AppDelegate::perform(Command command)
{
    if (m_isTerminating && command != Command::Quit)
        return;
    switch (command) {
    case Command::FullScreen:
        return spawn(captureFullScreen(ChosenIn::Elsewhere));
    case Command::Selection:
        return captureSelection();
    case Command::Preferences:
        return showPreferences();
    case Command::CheckForUpdates:
        if (m_updaterController == nullptr)
            fatal("updates are looked for before launch finished");
        return m_updaterController->checkForUpdates();
    case Command::Quit:
        return terminate();
    }
}

QCoro::Task<> AppDelegate::captureFullScreen(ChosenIn place)
{
    if (!m_captureEngine)
        fatal("a capture is asked for before launch finished");
    const QPointer self{this};
    ++m_capturesUnderWay;
    if (place == ChosenIn::Menu)
        co_await m_desktop.screenCapture->settle();
    if (!self)
        co_return;
    co_await m_captureEngine->captureFullScreen();
    if (!self)
        co_return;
    --m_capturesUnderWay;
    if (m_isTerminating && m_capturesUnderWay == 0)
        spawn(handOverAndQuit());
}

QCoro::Task<> AppDelegate::selectFromMenu()
{
    const QPointer self{this};
    co_await m_desktop.screenCapture->settle();
    if (self && !m_isTerminating)
        captureSelection();
}

void AppDelegate::captureSelection()
{
    if (!m_overlayController)
        fatal("a selection is asked for before launch finished");
    m_overlayController->showOverlay();
}

void AppDelegate::showPreferences()
{
    if (!m_preferencesController)
        fatal("the preferences are asked for before launch finished");
    m_preferencesController->show();
}

void AppDelegate::terminate()
{
    if (m_isTerminating)
        return QCoreApplication::quit();
    m_isTerminating = true;
    Q_EMIT terminating();
    if (m_overlayController)
        m_overlayController->dismissAll();
    // The menu whose entry may have asked for this goes on the next turn, and not under its feet.
    QTimer::singleShot(0ms, this, [this] {
        m_statusBarController.reset();
        m_desktop.statusItem.reset();
    });
    if (m_capturesUnderWay == 0)
        spawn(handOverAndQuit());
    else // the last one hands over, unless it hangs on a service that does not answer
        QTimer::singleShot(captureLimit, this, [this] { spawn(handOverAndQuit()); });
}

void AppDelegate::comeToRest()
{
    const bool isCapturing =
        m_capturesUnderWay > 0 || (m_overlayController && m_overlayController->isSelecting());
    if (isCapturing)
        return;
    if (m_imageSaver)
        m_imageSaver->shrink();
    if (m_overlayController)
        m_overlayController->shrink();
    giveBackMemory();
}

QCoro::Task<> AppDelegate::handOverAndQuit()
{
    co_await m_desktop.pasteboard->handOver();
    QCoreApplication::quit();
}

} // namespace lumacap
