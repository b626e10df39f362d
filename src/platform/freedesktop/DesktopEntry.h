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
    /// Nothing where the file can't be read, is larger than any entry, isn't written by the rules
    /// or starts no program.
    static std::optional<DesktopEntry> read(const QString &path);

    /// Whether a session manager starts it, on a desktop of these names, most specific first.
    bool startsAtLogin(const QStringList &desktops) const;

    /// Whether the person has deleted it, or an administrator for them.
    bool isHidden() const;
    /// The program's name for people of `locale`, as LC_MESSAGES has it ("sr_RS.UTF-8@latin");
    /// empty where the entry has none.
    QString name(const QByteArray &locale) const;
    /// The class that the program's windows have; empty where it doesn't say.
    QString startupWindowClass() const;

private:
    bool isShownOn(const QStringList &desktops) const;
    bool hasItsProgram() const;

    QHash<QByteArray, QByteArray> m_values;
};

/// The value of the key Exec that starts the program at `programPath` without arguments.
QString execValue(const QString &programPath);

} // namespace lumacap::freedesktop
