#include "AnnotationPictures.h"

#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "graphics/CanvasPainting.h"

#include <QPainter>

namespace lumacap::tests {

QImage painted(QSize size, int scale, const std::function<void(QPainter &)> &paint)
{
    QImage picture(size * scale, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setTransform(canvasToPixels({0, 0}, scale, picture.height()));
    paint(painter);
    return picture;
}

QImage live(const Annotation &annotation, QSize size, int scale)
{
    const Rect<Canvas> canvas{
        {0, 0}, {static_cast<double>(size.width()), static_cast<double>(size.height())}};
    return painted(size, scale, [&](QPainter &painter) { annotation.draw(painter, canvas); });
}

QImage finished(const Annotation &annotation, const QImage &screen, int scale)
{
    QImage picture = screen;
    QPainter painter(&picture);
    painter.setTransform(canvasToPixels({0, 0}, scale, picture.height()));
    const Rect<Canvas> canvas{{0, 0},
                              {static_cast<double>(screen.width()) / scale,
                               static_cast<double>(screen.height()) / scale}};
    annotation.drawWithImage(painter, canvas, screen, scale);
    return picture;
}

QImage screenOfDistinctPixels(QSize pixels)
{
    QImage screen(pixels, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            screen.setPixel(x, y, qRgb(x & 0xff, y & 0xff, (x >> 8) | ((y >> 8) << 4)));
    }
    return screen;
}

QRect inkBounds(const QImage &picture)
{
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) != 0)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

QColor colorAt(const QImage &picture, int x, int y)
{
    return picture.pixelColor(x, y);
}

std::vector<std::unique_ptr<Annotation>> oneOfEachRectangularKind(const Rect<Canvas> &rect)
{
    std::vector<std::unique_ptr<Annotation>> kinds;
    kinds.push_back(std::make_unique<RectAnnotation>(Qt::red, 4, rect));
    kinds.push_back(std::make_unique<EllipseAnnotation>(Qt::red, 4, rect));
    kinds.push_back(std::make_unique<BlurAnnotation>(Qt::red, 4, rect));
    auto magnifier =
        std::make_unique<MagnifierAnnotation>(Qt::red, 4, rect, 2, MagnifierShape::RoundedRect);
    magnifier->loupeOrigin = {rect.origin.x + 10, rect.origin.y + 5};
    magnifier->loupeSize = rect.size;
    kinds.push_back(std::move(magnifier));
    return kinds;
}

std::vector<std::unique_ptr<Annotation>> oneOfEachKind(const Rect<Canvas> &rect)
{
    const Point<Canvas> start = rect.origin;
    const Point<Canvas> end{rect.origin.x + rect.size.width, rect.origin.y + rect.size.height};
    std::vector<std::unique_ptr<Annotation>> kinds = oneOfEachRectangularKind(rect);
    kinds.push_back(std::make_unique<ArrowAnnotation>(Qt::red, 4, start, end));
    kinds.push_back(std::make_unique<NumberedPointAnnotation>(Qt::red, start, 7));
    kinds.push_back(
        std::make_unique<FreehandAnnotation>(Qt::red, 4, std::vector<Point<Canvas>>{start, end}));
    kinds.push_back(
        std::make_unique<TextAnnotation>(Qt::red, 4, start, QStringLiteral("Text"), 16));
    return kinds;
}

} // namespace lumacap::tests
