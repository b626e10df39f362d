#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>

QT_BEGIN_NAMESPACE
class QIcon;
QT_END_NAMESPACE

namespace lumacap::freedesktop {

/// A picture as tray hosts take it, (iiay): the size in pixels and, row by row from the top without
/// gaps, four bytes a pixel: alpha, red, green, blue, not premultiplied.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;

    friend bool operator==(const IconPixmap &, const IconPixmap &) = default;
};

using IconPixmapList = QList<IconPixmap>;

/// `icon` drawn for every size that panels are known to use, at scales 1 and 2, smallest first.
/// Sizes beyond the icon's own are left out; empty for an empty icon.
IconPixmapList iconPixmaps(const QIcon &icon);

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap);

} // namespace lumacap::freedesktop

Q_DECLARE_METATYPE(lumacap::freedesktop::IconPixmap)
