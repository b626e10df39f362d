#pragma once

#include "platform/ApplicationNames.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace lumacap::freedesktop {

/// Where desktop entries are looked for, and the language their names are told in.
struct DesktopEntrySurroundings {
    QStringList folders; ///< absolute, the most important first; not all of them need exist
    QByteArray locale; ///< as LC_MESSAGES has it

    /// From XDG_DATA_HOME and XDG_DATA_DIRS; from LC_ALL, LC_MESSAGES and LANG.
    static DesktopEntrySurroundings ofThisSession();

    friend bool operator==(const DesktopEntrySurroundings &,
                           const DesktopEntrySurroundings &) = default;
};

/// The names in the desktop entries of the installed applications.
///
/// Which entries there are is remembered until a folder changes, what is in one until then too: an
/// entry that is written over in place, and not replaced, is not noticed.
class DesktopEntryNames final : public ApplicationNames {
public:
    /// Reads nothing yet.
    explicit DesktopEntryNames(DesktopEntrySurroundings surroundings);

    /// An identifier is an entry's id, else its StartupWMClass, else its id in lower case. Reads
    /// the folders' times, and only what is not yet remembered of the rest.
    std::optional<QString> nameOf(const QStringList &identifiers) const override;

private:
    /// The names, where the entry counts: it can be read, has one and is not hidden.
    struct Entry {
        QString name;
        QString windowClass;
    };
    struct Folder {
        QString path;
        QDateTime changed;

        friend bool operator==(const Folder &, const Folder &) = default;
    };

    bool isUpToDate() const;
    void listEntries() const;
    void listFolder(const QString &path, const QString &idPrefix, int depth) const;
    const std::optional<Entry> &entry(const QString &id) const;
    std::optional<QString> nameById(const QString &id) const;
    std::optional<QString> nameByWindowClass(const QString &windowClass) const;

    DesktopEntrySurroundings m_surroundings;

    // What is remembered. Filled by questions, which change nothing that can be asked.
    mutable std::vector<Folder> m_folders;
    mutable QStringList m_ids; // in the order of the folders
    mutable QHash<QString, QString> m_paths; // by id
    mutable QHash<QString, std::optional<Entry>> m_entries; // by id
    mutable std::optional<QHash<QString, QString>> m_namesByClass;
};

} // namespace lumacap::freedesktop
