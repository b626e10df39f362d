#pragma once

#include "platform/Result.h"

#include <QString>

namespace lumacap::freedesktop {

/// Creates a folder and what is missing above it, for the user alone, as the rules for the user's
/// base folders ask; a folder that is there stays as it is.
Result<void> createFolder(const QString &path);

/// Puts the file `from` in the place of `to`, in one step for every reader. Where `to` is a
/// symbolic link, the link is replaced and not what it points to.
Result<void> renameOver(const QString &from, const QString &to);

} // namespace lumacap::freedesktop
