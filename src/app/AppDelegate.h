#pragma once

#include "app/Command.h"

#include <QCoroTask>
#include <QObject>

#include <memory>

namespace lumacap {

class CaptureEngine;
class HotkeyManager;
class ImageSaver;
class OverlayWindowController;
class PreferencesStorage;
class PreferencesWindowController;
class StatusBarController;
class Updater;
struct Desktop;

/// Owns what lives as long as the agent, builds it in order at launch, and leads each command to
/// the flow that carries it out. The same flow serves the menu, the shortcuts and the commands from
/// outside.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// Borrows both, which outlive the object. Nothing happens before launch finishes.
    AppDelegate(Desktop &desktop, PreferencesStorage &preferences);
    ~AppDelegate() override;
    Q_DISABLE_COPY_MOVE(AppDelegate)

    /// Builds the long-lived objects. Called once, before the event loop runs.
    void applicationDidFinishLaunching();

    /// Drops both shortcuts and registers them as they are stored; the menu shows them from then
    /// on. To be called when a stored one has changed. Launch has built the manager of shortcuts.
    void registerHotkeys();

    /// Carries out a command of this version; launch has finished.
    void perform(Command command);

    /// Ends the agent: captures under way are finished, what is on the clipboard is handed to the
    /// desktop's clipboard manager. Asked a second time it ends without waiting for either.
    void terminate();

    /// Nothing has happened for a while: lets go of what only a capture needs, unless one is under
    /// way.
    void comeToRest();

Q_SIGNALS:
    /// From now on no command is carried out.
    void terminating();

private:
    enum class ChosenIn { Menu, Elsewhere };

    void performFromMenu(Command command);
    QCoro::Task<> captureFullScreen(ChosenIn place);
    QCoro::Task<> selectFromMenu();
    void captureSelection();
    void showPreferences();
    QCoro::Task<> handOverAndQuit();

    Desktop &m_desktop;
    PreferencesStorage &m_preferences;
    Updater *m_updaterController = nullptr;
    std::unique_ptr<ImageSaver> m_imageSaver;
    std::unique_ptr<CaptureEngine> m_captureEngine;
    std::unique_ptr<OverlayWindowController> m_overlayController;
    std::unique_ptr<PreferencesWindowController> m_preferencesController;
    std::shared_ptr<HotkeyManager> m_hotkeyManager; // and the process's
    std::unique_ptr<StatusBarController> m_statusBarController;
    int m_capturesUnderWay = 0;
    bool m_isTerminating = false;
};

} // namespace lumacap
