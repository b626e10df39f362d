#include "platform/freedesktop/tray/IconPixmaps.h"

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace lumacap::freedesktop {

namespace {

constexpr std::array sizes{16, 18, 20, 22, 24, 32, 36, 44, 48, 64};

IconPixmap toNetworkOrder(const QImage &image)
{
    IconPixmap pixmap{.width = image.width(), .height = image.height(), .pixels = {}};
    pixmap.pixels.resize(qsizetype{4} * image.width() * image.height());
    char *out = pixmap.pixels.data();
    for (int y = 0; y < image.height(); ++y) {
        qToBigEndian<quint32>(image.constScanLine(y), image.width(), out);
        out += qsizetype{4} * image.width();
    }
    return pixmap;
}

} // namespace

IconPixmapList iconPixmaps(const QIcon &icon)
{
    IconPixmapList pixmaps;
    for (const int size : sizes) {
        const QImage image = icon.pixmap(QSize(size, size), 1.0).toImage();
        const bool isNew = std::ranges::none_of(pixmaps, [&image](const IconPixmap &drawn) {
            return QSize(drawn.width, drawn.height) == image.size();
        });
        if (!image.isNull() && isNew)
            pixmaps.append(toNetworkOrder(image.convertToFormat(QImage::Format_ARGB32)));
    }
    return pixmaps;
}

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

} // namespace lumacap::freedesktop
