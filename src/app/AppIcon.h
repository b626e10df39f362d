#pragma once

#include <QIcon>
#include <QString>

namespace lumacap {

/// The tray icon, drawn sharp at every size that trays use, from the picture in the resource at
/// `path`; the viewfinder symbol where there is no such picture or it does not load. It keeps its
/// own colours on light and dark panels.
QIcon appIcon(const QString &path);

} // namespace lumacap
