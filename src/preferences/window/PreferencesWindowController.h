#pragma once

#include "preferences/window/PreferencesServices.h"

#include <QObject>

#include <functional>
#include <memory>

namespace lumacap {

class PreferencesWindow;

/// Shows the preferences, in one window at most.
class PreferencesWindowController final : public QObject {
    Q_OBJECT

public:
    /// `onHotkeysChanged` is called after the user has changed a shortcut, once a change.
    PreferencesWindowController(const PreferencesServices &services,
                                std::function<void()> onHotkeysChanged);
    Q_DISABLE_COPY_MOVE(PreferencesWindowController)
    ~PreferencesWindowController() override;

    /// Brings the window to the front, or opens one with the settings as they are stored now.
    void show();

    /// The open window; null while none is.
    PreferencesWindow *window() const { return m_window.get(); }

private:
    PreferencesServices m_services;
    std::function<void()> m_onHotkeysChanged;
    std::unique_ptr<PreferencesWindow> m_window;
};

} // namespace lumacap
