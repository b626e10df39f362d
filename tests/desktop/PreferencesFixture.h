#pragma once

#include "HotkeyFixture.h"
#include "harness/AccessibleControls.h"

#include <QPoint>
#include <QSize>

#include <memory>
#include <optional>
#include <vector>

namespace lumacap::harness {

/// A person in front of the preferences window.
struct PreferencesFixture : HotkeyFixture {
    /// A desktop whose agent tells of its controls; `settings` are all there is.
    void startWith(const Settings &settings = {},
                   WindowManager windowManager = WindowManager::Openbox);
    /// The desktop alone.
    void startBareDesktop(WindowManager windowManager = WindowManager::Openbox);
    /// Asks for the window and waits until it shows and has the keyboard.
    void openWindow();
    /// Closes it as its frame's button does.
    void closeWindow();
    /// The X windows of ours that are on the screen and that a window manager looks after.
    std::vector<std::uint32_t> windows();
    /// Whether the window manager says that a window of ours is the active one.
    bool isInFront();

    /// Clicks the control of this name, waited for and scrolled into view.
    void use(const QString &name);
    void turnWheelTo(const QString &name);
    bool isChecked(const QString &name);
    bool comesToBeChecked(const QString &name);
    /// Whether it shows, or does not show, in the end.
    bool comes(const QString &name);
    bool goes(const QString &name);
    /// The name of the control with the focus; the shown text where a shortcut is recorded.
    QString focused();
    /// Presses Tab until the control of this name has the focus.
    void tabTo(const QString &name);

    /// What the settings file has under `key`, as text; nothing where it has nothing.
    std::optional<QString> stored(const QString &key) const;
    bool comesToBeStored(const QString &key, const QString &value) const;
    QString autostartEntry() const;

    AccessibleControls &controls() { return *m_controls; }

    QSize screenSize{1000, 800}; ///< of the desktop that is started next

private:
    std::optional<AccessibleControl> control(const QString &name);
    std::optional<AccessibleControl> showing(const QString &name, const QStringList &roles) const;

    std::unique_ptr<AccessibleControls> m_controls;
};

} // namespace lumacap::harness
