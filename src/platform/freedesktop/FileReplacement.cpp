#include "platform/freedesktop/FileReplacement.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {

Result<void> createFolder(const QString &path)
{
    const QFileInfo folder(path);
    if (folder.isDir())
        return {};
    if (folder.path() != path && !folder.exists()) {
        if (auto above = createFolder(folder.path()); !above)
            return above;
    }
    if (mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0)
        return {};
    const int error = errno; // the next question changes it
    if (!QFileInfo{path}.isDir()) // it may have been created at the same moment
        return failure(u"The folder %1 can't be created: %2"_s.arg(path, qt_error_string(error)));
    return {};
}

Result<void> renameOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return failure(u"%1 can't be replaced: %2"_s.arg(to, qt_error_string(errno)));
    return {};
}

} // namespace lumacap::freedesktop
