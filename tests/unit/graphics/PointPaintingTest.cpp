#include "graphics/PointPainting.h"

#include "graphics/SymbolImage.h"

#include <QPainter>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

QImage emptyPicture(double ratio)
{
    QImage picture(90, 90, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

TEST(PointPainting, symbolsAreDrawnPixelForPixelAtAnyDensityAndPlace)
{
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (const double unitsAPoint : {1.0, 4.0 / 3}) {
            QImage picture = emptyPicture(ratio);
            QPainter painter(&picture);
            painter.scale(unitsAPoint, unitsAPoint);
            drawSymbol(painter, u"eye.slash"_s, {2.3, 1.7, 18, 18}, 15.6, Qt::black);
            painter.end();
            picture.setDevicePixelRatio(1);
            QImage symbol = symbolImage(u"eye.slash"_s, 15.6, ratio * unitsAPoint, Qt::black);
            symbol.setDevicePixelRatio(1);

            const QPointF middle = QPointF(11.3, 10.7) * unitsAPoint * ratio;
            const QPoint corner(static_cast<int>(std::round(middle.x() - symbol.width() / 2.0)),
                                static_cast<int>(std::round(middle.y() - symbol.height() / 2.0)));
            EXPECT_EQ(picture.copy(QRect(corner, symbol.size())), symbol) << ratio;
        }
    }
}

TEST(PointPainting, aRectangleIsAlignedToWholePixels)
{
    QImage picture = emptyPicture(1.5);
    QPainter painter(&picture);
    painter.translate(0.4, 0);

    const QRectF aligned = alignedToPixels(painter, {10, 10, 1, 22});

    EXPECT_NEAR((aligned.left() + 0.4) * 1.5, 16, 1e-9);
    EXPECT_NEAR(aligned.top() * 1.5, 15, 1e-9);
    EXPECT_NEAR(aligned.height() * 1.5, 33, 1e-9);
}

TEST(PointPainting, aContinuousCornerPassesTheMiddleOfTheCircles)
{
    const QPainterPath path = continuousRoundedRect({0, 0, 100, 60}, 10);

    const double middle = 10 * (1 - std::sqrt(0.5));
    EXPECT_FALSE(path.contains(QPointF(middle - 0.05, middle - 0.05)));
    EXPECT_TRUE(path.contains(QPointF(middle + 0.05, middle + 0.05)));
    EXPECT_EQ(path.boundingRect(), QRectF(0, 0, 100, 60));
}

TEST(PointPainting, aRadiusThatIsTooLongIsCutShort)
{
    const QRectF rect(0, 0, 20, 8);

    EXPECT_EQ(continuousRoundedRect(rect, 50).boundingRect(), rect);
    EXPECT_TRUE(continuousRoundedRect(rect, 0).contains(QPointF(0.01, 0.01)));
}

} // namespace
} // namespace lumacap::tests
