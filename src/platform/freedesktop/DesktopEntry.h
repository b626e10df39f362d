#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace lumacap::freedesktop {

/// The group [Desktop Entry] of a desktop entry file.
class DesktopEntry {
public:
    /// Nothing where the file can't be read, isn't written by the rules or starts no program.
    static std::optional<DesktopEntry> read(const QString &path);

    /// Whether a session manager starts it, on a desktop of these names, most specific first.
    bool startsAtLogin(const QStringList &desktops) const;

private:
    bool isHidden() const;
    bool isShownOn(const QStringList &desktops) const;
    bool hasItsProgram() const;

    QHash<QByteArray, QByteArray> m_values;
};

/// The value of the key Exec that starts the program at `programPath` without arguments.
QString execValue(const QString &programPath);

} // namespace lumacap::freedesktop
