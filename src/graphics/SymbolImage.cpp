#include "graphics/SymbolImage.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr int cachedBytes = 512 * 1024; // some ten times what one toolbar shows

struct Key {
    QString name;
    int side;
    QRgb color;

    friend bool operator==(const Key &, const Key &) = default;
    friend std::size_t qHash(const Key &key, std::size_t seed = 0)
    {
        return qHashMulti(seed, key.name, key.side, key.color);
    }
};

QImage drawn(const QString &name, int side, const QColor &color)
{
    QSvgRenderer drawing;
    const QString path = u":/symbols/"_s + name + u".svg"_s;
    if (!QFile::exists(path) || !drawing.load(path))
        return {};
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, QRectF(0, 0, side, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace

QImage symbolImage(const QString &name, double points, double pixelsAPoint, const QColor &color)
{
    static QCache<Key, QImage> images(cachedBytes);
    const int side = std::max(1, static_cast<int>(std::lround(points * pixelsAPoint)));
    const Key key{name, side, color.rgba()};
    const QImage *const known = images.object(key);
    QImage image = known != nullptr ? *known : drawn(name, side, color);
    if (known == nullptr && !image.isNull())
        images.insert(key, new QImage(image), image.sizeInBytes());
    if (!image.isNull())
        image.setDevicePixelRatio(pixelsAPoint);
    return image;
}

} // namespace lumacap
