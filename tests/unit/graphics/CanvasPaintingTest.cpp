#include "graphics/CanvasPainting.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace lumacap {

TEST(CanvasPainting, canvasGoesUpFromTheLowerLeftCornerThatAPictureShows)
{
    const QTransform transform = canvasToPixels({100, 50}, 2, 300);

    EXPECT_EQ(transform.map(QPointF(100, 50)), QPointF(0, 300));
    EXPECT_EQ(transform.map(QPointF(100, 200)), QPointF(0, 0));
    EXPECT_EQ(transform.map(QPointF(101, 51)), QPointF(2, 298));
}

TEST(CanvasPainting, rectanglesLoseTheirNegativeSides)
{
    EXPECT_EQ(toQRectF({{10, 20}, {-4, -6}}), QRectF(6, 14, 4, 6));
}

TEST(CanvasPainting, visiblePixelsAreThoseOfThePictureInsideTheClip)
{
    QImage picture(200, 300, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setTransform(canvasToPixels({0, 0}, 2, 300));
    EXPECT_EQ(visiblePixels(painter), QRectF(0, 0, 200, 300));

    painter.setClipRect(QRectF(10, 20, 30, 40));
    EXPECT_EQ(visiblePixels(painter), QRectF(20, 300 - 120, 60, 80));
    painter.setClipRect(QRectF(90, 140, 100, 100));
    EXPECT_EQ(visiblePixels(painter), QRectF(180, 0, 20, 20));
}

} // namespace lumacap
