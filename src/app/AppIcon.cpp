#include "app/AppIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

/// 18 points at the usual densities, and the sizes that panels ask for.
constexpr std::array sizes{16, 18, 20, 22, 24, 32, 36, 44, 48, 64};

const QString fallbackSymbol = u":/camera.viewfinder.svg"_s;

QIcon rendered(QSvgRenderer &drawing)
{
    QIcon icon;
    for (const int size : sizes) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawing.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon appIcon(const QString &path)
{
    QSvgRenderer drawing;
    if (!drawing.load(path) && !drawing.load(fallbackSymbol))
        return {};
    return rendered(drawing);
}

} // namespace lumacap
