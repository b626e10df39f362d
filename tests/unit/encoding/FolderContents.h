#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace lumacap::samples {

/// Every name in `folder`, hidden ones too, sorted.
QStringList namesIn(const QString &folder);

/// What the file at `path` holds; empty where there is none.
QByteArray contentsOf(const QString &path);

/// A new file with these bytes; false where it cannot be written.
bool placeFile(const QString &path, const QByteArray &bytes);

/// The nine permission bits at `path`, as in chmod; -1 where there is nothing.
int permissionsOf(const QString &path);

} // namespace lumacap::samples
