#include "app/AppDelegate.h"

#include "app/Desktop.h"
#include "app/StatusBarController.h"
#include "capture/CaptureEngine.h"
#include "capture/ImageSaver.h"
#include "graphics/Fatal.h"
#include "platform/Spawn.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QCoreApplication>
#include <QCoroSignal>
#include <QPointer>

#include <chrono>
#include <tuple>

using namespace std::chrono_literals;

namespace lumacap {

namespace {

/// Longer than any capture takes that will end at all.
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

    const auto performing = [self = QPointer(this)](Command command) {
        return [self, command] {
            if (self)
                self->perform(command);
        };
    };
    m_statusBarController = std::make_unique<StatusBarController>(
        *m_desktop.statusItem, performing(Command::FullScreen), performing(Command::Selection),
        performing(Command::Preferences), performing(Command::CheckForUpdates),
        performing(Command::Quit));
    m_statusBarController->updateMenuShortcutLabels(m_preferences.fullScreenHotkey(),
                                                    m_preferences.selectionHotkey());
}

void AppDelegate::perform(Command command)
{
    switch (command) {
    case Command::FullScreen:
        return spawn(captureFullScreen());
    case Command::Selection:
    case Command::Preferences:
        fatal("a command that this version does not offer");
    case Command::CheckForUpdates:
        if (m_updaterController == nullptr)
            fatal("updates are looked for before launch finished");
        return m_updaterController->checkForUpdates();
    case Command::Quit:
        return terminate();
    }
}

QCoro::Task<> AppDelegate::captureFullScreen()
{
    if (!m_captureEngine)
        fatal("a capture is asked for before launch finished");
    ++m_capturesUnderWay;
    co_await m_captureEngine->captureFullScreen();
    --m_capturesUnderWay;
    Q_EMIT captureEnded();
}

void AppDelegate::terminate()
{
    if (m_isTerminating)
        return;
    m_isTerminating = true;
    spawn(finishAndQuit());
}

QCoro::Task<> AppDelegate::finishAndQuit()
{
    const QPointer self{this};
    while (self && m_capturesUnderWay > 0) {
        const auto ended = co_await qCoro(this, &AppDelegate::captureEnded, captureLimit);
        if (!ended)
            break; // it hangs on a service that does not answer
    }
    if (!self)
        co_return;
    co_await m_desktop.pasteboard->handOver();
    QCoreApplication::quit();
}

} // namespace lumacap
