#include "annotation/shapes/BlurAnnotation.h"

#include "AnnotationPictures.h"
#include "annotation/shapes/FrozenCrop.h"
#include "annotation/shapes/Pixelation.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

namespace lumacap::tests {
namespace {

BlurAnnotation blur(const Rect<Canvas> &rect)
{
    return {Qt::red, 4, rect};
}

bool isVeil(const QColor &color)
{
    return std::abs(color.alphaF() - 0.3F) < 0.005F && std::abs(color.red() - 128) <= 2
        && color.red() == color.green() && color.green() == color.blue();
}

TEST(BlurAnnotation, liveRegionOfTwoByFiftyPointsDrawsNothing)
{
    EXPECT_TRUE(inkBounds(live(blur({{10, 5}, {2, 50}}), {60, 60})).isNull());
    EXPECT_TRUE(inkBounds(live(blur({{5, 10}, {50, 2}}), {60, 60})).isNull());
}

TEST(BlurAnnotation, liveRegionOfThreeByThreePointsIsAGreyVeil)
{
    const QImage picture = live(blur({{10, 20}, {3, 3}}), {60, 60});

    EXPECT_EQ(inkBounds(picture), QRect(10, 60 - 23, 3, 3));
    EXPECT_TRUE(isVeil(colorAt(picture, 11, 38)));
    EXPECT_TRUE(isVeil(colorAt(picture, 10, 37))) << "up to its corner";
}

TEST(BlurAnnotation, regionOfFourByFortyPointsIsLeftUntouchedInTheFinalPicture)
{
    const QImage screen = screenOfDistinctPixels({60, 60});

    EXPECT_EQ(finished(blur({{10, 5}, {4, 40}}), screen), screen);
    EXPECT_EQ(finished(blur({{5, 10}, {40, 4}}), screen), screen);
}

TEST(BlurAnnotation, regionOfSeventeenByNinePointsBecomesTwoBlocks)
{
    EXPECT_EQ(pixelationBlocks(17), 2);
    EXPECT_EQ(pixelationBlocks(9), 1);
    const QImage screen = screenOfDistinctPixels({60, 60});

    const QImage picture = finished(blur({{20, 10}, {17, 9}}), screen);

    const int top = 60 - 19;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 60; ++x) {
            QRgb expected = screen.pixel(x, y);
            // The blocks meet at 20 + 8.5; a pixel belongs to the one its centre lies on.
            if (x >= 20 && x < 37 && y >= top && y < top + 9)
                expected = screen.pixel(20 + (x < 28 ? 4 : 12), top + 4);
            ASSERT_EQ(picture.pixel(x, y), expected) << x << ' ' << y;
        }
    }
}

TEST(BlurAnnotation, blocksAreEightPointsAtEveryScale)
{
    for (const int scale : {1, 2, 3}) {
        const QImage screen = screenOfDistinctPixels(QSize(100, 80) * scale);

        const QImage picture = finished(blur({{16, 8}, {64, 40}}), screen, scale);

        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                QRgb expected = screen.pixel(x, y);
                const int block = 8 * scale;
                const QPoint inside(x - 16 * scale, y - (80 - 48) * scale);
                if (QRect(0, 0, 64 * scale, 40 * scale).contains(inside)) {
                    const QPoint center(inside.x() / block * block + block / 2,
                                        inside.y() / block * block + block / 2);
                    expected = screen.pixel(center + QPoint(16 * scale, (80 - 48) * scale));
                }
                ASSERT_EQ(picture.pixel(x, y), expected) << scale << ": " << x << ' ' << y;
            }
        }
    }
}

TEST(BlurAnnotation, regionBetweenPixelsSamplesACropWidenedToWholePixels)
{
    const QImage screen = screenOfDistinctPixels({60, 60});
    const Rect<Canvas> rect{{10.3, 20.6}, {16, 16}};

    const QImage crop = cropUnder(rect, screen, 1);
    EXPECT_EQ(crop.size(), QSize(17, 17));
    EXPECT_EQ(crop.pixel(0, 0), screen.pixel(10, 23)); // 60 - 36.6 = 23.4

    const QImage picture = finished(blur(rect), screen);
    EXPECT_EQ(picture.pixel(10, 23), screen.pixel(10 + 4, 23 + 4)); // ⌊0.5 · 17 / 2⌋ = 4
    EXPECT_EQ(picture.pixel(18, 31), screen.pixel(10 + 12, 23 + 12)); // ⌊1.5 · 17 / 2⌋ = 12
    EXPECT_EQ(picture.pixel(17, 30), picture.pixel(10, 23)) << "the blocks meet at 18.3, 31.4";
    EXPECT_EQ(picture.pixel(25, 38), picture.pixel(18, 31));
    EXPECT_EQ(picture.pixel(26, 39), screen.pixel(26, 39)) << "its centre lies outside";
    EXPECT_EQ(picture.pixel(9, 23), screen.pixel(9, 23));
}

TEST(BlurAnnotation, regionAcrossTheScreensEdgeStretchesWhatThereIsOverAllOfIt)
{
    const QImage screen = screenOfDistinctPixels({60, 60});

    const QImage picture = finished(blur({{-16, 10}, {32, 16}}), screen);

    // Four blocks of eight points, of which the last two are seen, over sixteen pixels of crop.
    EXPECT_EQ(picture.pixel(0, 40), screen.pixel(10, 60 - 26 + 4));
    EXPECT_EQ(picture.pixel(8, 40), screen.pixel(14, 60 - 26 + 4));
    EXPECT_EQ(picture.pixel(16, 40), screen.pixel(16, 40));
}

TEST(BlurAnnotation, regionBesideTheScreenIsAVeil)
{
    QImage canvas(60, 60, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    const QImage screen = screenOfDistinctPixels({60, 20}); // its upper edge is at 20 points
    QPainter painter(&canvas);
    painter.translate(0, 60);
    painter.scale(1, -1);

    blur({{10, 30}, {20, 20}}).drawWithImage(painter, {{0, 0}, {60, 60}}, screen, 1);
    painter.end();

    EXPECT_EQ(inkBounds(canvas), QRect(10, 10, 20, 20));
    EXPECT_TRUE(isVeil(colorAt(canvas, 20, 20)));
}

} // namespace
} // namespace lumacap::tests
