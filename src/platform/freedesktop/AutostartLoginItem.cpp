#include "platform/freedesktop/AutostartLoginItem.h"

#include "platform/freedesktop/ApplicationId.h"
#include "platform/freedesktop/DesktopEntry.h"
#include "platform/freedesktop/FileReplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {
namespace {

constexpr auto readableByAll = QFileDevice::ReadOwner | QFileDevice::WriteOwner
    | QFileDevice::ReadGroup | QFileDevice::ReadOther;

QString entryIn(const QString &configFolder)
{
    return u"%1/autostart/%2.desktop"_s.arg(configFolder, applicationId);
}

/// A link counts also where it leads nowhere: session managers go by the names in the folder.
bool isThere(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

QStringList absoluteFolders(const QByteArray &variable)
{
    QStringList folders = QFile::decodeName(variable).split(u':', Qt::SkipEmptyParts);
    folders.removeIf([](const QString &folder) { return !QDir::isAbsolutePath(folder); });
    return folders;
}

enum class Visibility { Shown, Hidden };

QByteArray entryText(const QString &programPath, Visibility visibility)
{
    QString text = u"[Desktop Entry]\n"
                   "Type=Application\n"
                   "Name=Lumacap\n"
                   "Comment=Screenshots from the tray\n"
                   "Icon=%1\n"
                   "Exec=%2\n"
                   "Terminal=false\n"
                   "StartupNotify=false\n"_s.arg(applicationId, execValue(programPath));
    if (visibility == Visibility::Hidden)
        text += u"Hidden=true\n"_s;
    return text.toUtf8();
}

/// Renames a finished file over `path`: where that is a link, into a system folder or to /dev/null,
/// the link is replaced and not what it points to.
Result<void> replaceFile(const QString &path, const QByteArray &content)
{
    if (auto created = createFolder(QFileInfo{path}.path()); !created)
        return created;
    QTemporaryFile fresh(path + u".XXXXXX"_s);
    if (!fresh.open() || fresh.write(content) != content.size() || !fresh.flush()
        || !fresh.setPermissions(readableByAll))
        return failure(u"%1 can't be written: %2"_s.arg(path, fresh.errorString()));
    auto replaced = renameOver(fresh.fileName(), path);
    fresh.setAutoRemove(!replaced);
    return replaced;
}

Result<void> removeFile(const QString &path)
{
    QFile file(path);
    if (isThere(path) && !file.remove())
        return failure(u"%1 can't be removed: %2"_s.arg(path, file.errorString()));
    return {};
}

} // namespace

AutostartSurroundings AutostartSurroundings::ofThisSession()
{
    const QString home = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
    const QStringList folders = absoluteFolders(qgetenv("XDG_CONFIG_DIRS"));
    return {.configHome = QDir::isAbsolutePath(home) ? home : QDir::homePath() + u"/.config"_s,
            .configFolders = folders.isEmpty() ? QStringList{u"/etc/xdg"_s} : folders,
            .desktops =
                qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts)};
}

AutostartLoginItem::AutostartLoginItem(QString programPath, AutostartSurroundings surroundings)
    : m_programPath{std::move(programPath)}
    , m_surroundings{std::move(surroundings)}
{
}

QString AutostartLoginItem::ownEntry() const
{
    return entryIn(m_surroundings.configHome);
}

Result<void> AutostartLoginItem::registerItem()
{
    return replaceFile(ownEntry(), entryText(m_programPath, Visibility::Shown));
}

Result<void> AutostartLoginItem::unregisterItem()
{
    if (startsFrom(m_surroundings.configFolders))
        return replaceFile(ownEntry(), entryText(m_programPath, Visibility::Hidden));
    return removeFile(ownEntry());
}

bool AutostartLoginItem::isEnabled() const
{
    return startsFrom(QStringList{m_surroundings.configHome} + m_surroundings.configFolders);
}

bool AutostartLoginItem::startsFrom(const QStringList &configFolders) const
{
    const auto first = std::ranges::find_if(
        configFolders, [](const QString &folder) { return isThere(entryIn(folder)); });
    if (first == configFolders.end())
        return false;
    const auto entry = DesktopEntry::read(entryIn(*first));
    return entry && entry->startsAtLogin(m_surroundings.desktops);
}

} // namespace lumacap::freedesktop
