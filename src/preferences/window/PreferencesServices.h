#pragma once

namespace lumacap {

class FolderPanel;
class HotkeyService;
class PreferencesStorage;

/// What the preferences window asks of the rest, all of which outlives it.
struct PreferencesServices {
    PreferencesStorage &preferences;
    HotkeyService &hotkeyService;
    FolderPanel &folderPanel;
};

} // namespace lumacap
