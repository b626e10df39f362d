#pragma once

#include "preferences/storage/ImageFormat.h"
#include "preferences/storage/KeyCombo.h"

#include <QString>

namespace lumacap {

class DefaultsStore;
class LoginItem;

/// The user's settings over the defaults store. Nothing is cached: every read goes to the store and
/// applies its own default, so that a value written by anyone is seen by the next read of any
/// other.
class PreferencesStorage {
public:
    /// Borrows both services, which outlive the object.
    PreferencesStorage(DefaultsStore &defaults, LoginItem &loginItem);
    Q_DISABLE_COPY_MOVE(PreferencesStorage)
    ~PreferencesStorage() = default;

    /// The services that the shared instance is made over; named once, before its first use.
    static void useServices(DefaultsStore &defaults, LoginItem &loginItem);
    /// The process-wide settings, made at first use and never released. Called in `app/` only,
    /// which hands them on.
    static PreferencesStorage &shared();

    /// The store itself, for the settings that their one reader reads directly.
    DefaultsStore &defaults() const { return m_defaults; }

    /// Control, shift and "1" when none or a damaged one is stored.
    KeyCombo fullScreenHotkey() const;
    void setFullScreenHotkey(KeyCombo combo);

    /// Control, shift and "2" when none or a damaged one is stored.
    KeyCombo selectionHotkey() const;
    void setSelectionHotkey(KeyCombo combo);

    /// On when nothing is stored; off for anything stored that is no true boolean.
    bool copyToClipboard() const;
    /// PNG for every text that names no other format.
    ImageFormat imageFormat() const;
    /// A folder's path, as it was stored: whether it exists is found out by whoever writes there.
    /// The desktop's own folder when none is stored.
    QString saveDirectory() const;

    /// Whether the desktop starts the program at login.
    bool launchAtLogin() const;
    /// A failure is one line on standard output; nothing is retried or stored.
    void setLaunchAtLogin(bool enabled);

private:
    DefaultsStore &m_defaults;
    LoginItem &m_loginItem;
};

} // namespace lumacap
