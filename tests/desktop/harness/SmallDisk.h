#pragma once

#include <QString>
#include <QStringList>

namespace lumacap::harness {

/// What is mounted.
enum class Access { ReadWrite, ReadOnly };

/// A command prefix for `Process`: runs the rest of its arguments where `folder` is an empty disk
/// of `kibibytes` of its own, seen by that process alone. Works for every user who may make name
/// spaces.
QStringList withSmallDisk(const QString &folder, int kibibytes, Access access = Access::ReadWrite);
/// `folder` as the process `pid` sees it, for a look into such a disk.
QString seenBy(int pid, const QString &folder);

} // namespace lumacap::harness
