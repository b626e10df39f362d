#pragma once

#include "platform/LoginItem.h"

#include <QString>
#include <QStringList>

namespace lumacap::freedesktop {

/// Where a desktop looks for programs to start at login, and what it calls itself.
struct AutostartSurroundings {
    QString configHome; ///< the user's own folder, absolute
    QStringList configFolders; ///< the system's folders, absolute, most important first
    QStringList desktops; ///< the names of the running desktop, most specific first

    /// From XDG_CONFIG_HOME, XDG_CONFIG_DIRS and XDG_CURRENT_DESKTOP; relative folders don't count.
    static AutostartSurroundings ofThisSession();

    friend bool operator==(const AutostartSurroundings &, const AutostartSurroundings &) = default;
};

/// An autostart entry in the user's folder.
class AutostartLoginItem final : public LoginItem {
public:
    /// `programPath` is the absolute path of what is started. Nothing is read or written yet.
    AutostartLoginItem(QString programPath, AutostartSurroundings surroundings);

    /// Writes the user's entry whole or not at all; one that hides the program is replaced.
    Result<void> registerItem() override;
    /// Removes the user's entry, or hides the system's where that would start the program then.
    Result<void> unregisterItem() override;
    bool isEnabled() const override;

private:
    bool startsFrom(const QStringList &configFolders) const;
    QString ownEntry() const;

    QString m_programPath;
    AutostartSurroundings m_surroundings;
};

} // namespace lumacap::freedesktop
