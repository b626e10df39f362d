#pragma once

#include "platform/ApplicationNames.h"
#include "platform/DefaultsStore.h"
#include "platform/FolderPanel.h"
#include "platform/HotkeyService.h"
#include "platform/LoginItem.h"
#include "platform/OverlaySurface.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "platform/SoundPlayer.h"
#include "platform/StatusItem.h"
#include "platform/Updater.h"
#include "platform/WindowList.h"

#include <memory>

namespace lumacap {

class Session;

/// The services of the session's desktop. Each is there: where the session offers none, one that
/// answers so.
struct Desktop {
    std::unique_ptr<DefaultsStore> defaults;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<ScreenCapture> screenCapture;
    std::unique_ptr<ApplicationNames> applicationNames;
    std::unique_ptr<WindowList> windowList; // asks applicationNames, so that it goes first
    std::unique_ptr<OverlaySurface> overlaySurface;
    std::unique_ptr<HotkeyService> hotkeyService;
    std::unique_ptr<FolderPanel> folderPanel;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<SoundPlayer> soundPlayer;
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<Updater> updater;
};

/// Every service, each by the first row of its table that the session offers. An environment
/// variable named after the service (LUMACAP_SCREEN_CAPTURE=x11) forces a row. `session` outlives
/// the answer.
Desktop makeDesktop(const Session &session);

/// The one service that a picture needs; works without a GUI application.
std::unique_ptr<ScreenCapture> makeScreenCapture(const Session &session);

} // namespace lumacap
