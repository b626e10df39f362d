#include "platform/freedesktop/DesktopEntryNames.h"

#include "platform/freedesktop/DesktopEntry.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {

namespace {

const QString suffix = u".desktop"_s;
/// Folders are looked into so deep, which ends circles of links.
constexpr int deepest = 4;

QDateTime changeOf(const QString &folder)
{
    return QFileInfo(folder).lastModified(); // invalid where there is none
}

} // namespace

DesktopEntrySurroundings DesktopEntrySurroundings::ofThisSession()
{
    QByteArray locale;
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (locale.isEmpty())
            locale = qgetenv(variable);
    }
    return {.folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation),
            .locale = locale};
}

DesktopEntryNames::DesktopEntryNames(DesktopEntrySurroundings surroundings)
    : m_surroundings(std::move(surroundings))
{
}

std::optional<QString> DesktopEntryNames::nameOf(const QStringList &identifiers) const
{
    if (!isUpToDate())
        listEntries();
    for (const QString &identifier : identifiers) {
        if (auto name = nameById(identifier))
            return name;
        if (auto name = nameByWindowClass(identifier))
            return name;
        if (auto name = nameById(identifier.toLower()))
            return name;
    }
    return std::nullopt;
}

bool DesktopEntryNames::isUpToDate() const
{
    return !m_folders.empty() && std::ranges::all_of(m_folders, [](const Folder &folder) {
        return changeOf(folder.path) == folder.changed;
    });
}

void DesktopEntryNames::listEntries() const
{
    m_folders.clear();
    m_ids.clear();
    m_paths.clear();
    m_entries.clear();
    m_namesByClass.reset();
    for (const QString &folder : m_surroundings.folders)
        listFolder(folder, QString(), 0);
}

void DesktopEntryNames::listFolder(const QString &path, const QString &idPrefix, int depth) const
{
    m_folders.push_back({path, changeOf(path)});
    constexpr auto kinds = QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot;
    for (const QFileInfo &file : QDir(path).entryInfoList(kinds, QDir::Name)) {
        if (file.isDir() && depth < deepest) {
            listFolder(file.filePath(), idPrefix + file.fileName() + u'-', depth + 1);
            continue;
        }
        if (!file.fileName().endsWith(suffix))
            continue;
        const QString id = idPrefix + file.fileName().chopped(suffix.size());
        if (m_paths.contains(id)) // one in a more important folder takes its place, also if hidden
            continue;
        m_paths.insert(id, file.filePath());
        m_ids.append(id);
    }
}

const std::optional<DesktopEntryNames::Entry> &DesktopEntryNames::entry(const QString &id) const
{
    if (const auto known = m_entries.find(id); known != m_entries.end())
        return *known;
    std::optional<Entry> entry;
    if (const auto read = DesktopEntry::read(m_paths.value(id)); read && !read->isHidden()) {
        const QString name = read->name(m_surroundings.locale);
        if (!name.isEmpty())
            entry = Entry{name, read->startupWindowClass()};
    }
    return *m_entries.insert(id, entry);
}

std::optional<QString> DesktopEntryNames::nameById(const QString &id) const
{
    if (!m_paths.contains(id))
        return std::nullopt;
    const std::optional<Entry> &found = entry(id);
    return found ? std::optional(found->name) : std::nullopt;
}

std::optional<QString> DesktopEntryNames::nameByWindowClass(const QString &windowClass) const
{
    if (!m_namesByClass) {
        m_namesByClass.emplace();
        for (const QString &id : m_ids) {
            const std::optional<Entry> &each = entry(id);
            if (each && !each->windowClass.isEmpty()
                && !m_namesByClass->contains(each->windowClass))
                m_namesByClass->insert(each->windowClass, each->name);
        }
    }
    const auto name = m_namesByClass->constFind(windowClass);
    return name == m_namesByClass->cend() ? std::nullopt : std::optional(*name);
}

} // namespace lumacap::freedesktop
