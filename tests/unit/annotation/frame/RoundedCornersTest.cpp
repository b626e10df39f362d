#include "annotation/frame/RoundedCorners.h"

#include "Pixels.h"

#include <gtest/gtest.h>

#include <numbers>

namespace lumacap {
namespace {

constexpr QRgb black = 0xff000000U;
constexpr QRgb blue = 0xff0000ffU;

/// A card of one colour on a picture of another.
QImage rounded(QSize size, const QRect &card, double radius, QRgb background, QRgb color)
{
    QImage picture = filled(size.width(), size.height(), background);
    const RoundedCorners corners(picture, card, radius);
    for (int y = card.top(); y <= card.bottom(); ++y) {
        for (int x = card.left(); x <= card.right(); ++x)
            picture.setPixel(x, y, color);
    }
    corners.round(picture);
    return picture;
}

TEST(RoundedCorners, giveTheBackgroundBackOutsideTheCircle)
{
    const QImage picture = rounded({60, 60}, {10, 10, 40, 40}, 10, blue, black);
    for (const QPoint corner : {QPoint(10, 10), QPoint(49, 10), QPoint(10, 49), QPoint(49, 49)})
        EXPECT_EQ(picture.pixel(corner), blue);
}

TEST(RoundedCorners, leaveTheRestOfTheCardAlone)
{
    const QImage picture = rounded({60, 60}, {10, 10, 40, 40}, 10, blue, black);
    EXPECT_EQ(picture.pixel(13, 14), black); // within 10 pixels of the circle's centre
    EXPECT_EQ(picture.pixel(20, 10), black);
    EXPECT_EQ(picture.pixel(39, 49), black);
    EXPECT_EQ(picture.pixel(10, 30), black);
    EXPECT_EQ(picture.pixel(9, 30), blue);
}

TEST(RoundedCorners, areTheSameOnAllFourSides)
{
    const QImage picture = rounded({30, 27}, {3, 2, 24, 23}, 7.5, blue, black);
    EXPECT_EQ(picture.copy(3, 2, 24, 23), picture.copy(3, 2, 24, 23).mirrored(true, false));
    EXPECT_EQ(picture.copy(3, 2, 24, 23), picture.copy(3, 2, 24, 23).mirrored(false, true));
}

TEST(RoundedCorners, layTheWhiteCardBetweenTheBackgroundAndThePainting)
{
    // A quarter disc covers this share of its square, first by white and then by black.
    constexpr double share = std::numbers::pi / 4;
    const QImage picture = rounded({4, 4}, {1, 1, 2, 2}, 1, black, black);
    EXPECT_NEAR(qRed(picture.pixel(1, 1)), 255 * share * (1 - share), 1);
}

TEST(RoundedCorners, coverEachPixelByItsShareOfTheDisc)
{
    // White on black leaves 1 - (1 - share)² of a pixel, from which the disc's area can be read.
    const QImage picture = rounded({20, 20}, {0, 0, 20, 20}, 10, black, 0xffffffffU);
    double area = 0;
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x)
            area += 1 - std::sqrt(1 - qRed(picture.pixel(x, y)) / 255.0);
    }
    EXPECT_NEAR(area, std::numbers::pi * 100, 1);
}

TEST(RoundedCorners, meetOnANarrowCard)
{
    const QImage picture = rounded({5, 9}, {1, 1, 3, 7}, 1.5, blue, black);
    EXPECT_EQ(picture.copy(1, 1, 3, 7), picture.copy(1, 1, 3, 7).mirrored(true, true));
    EXPECT_EQ(picture.pixel(2, 4), black);
    EXPECT_NE(picture.pixel(1, 1), black);
    const QImage thin = rounded({5, 9}, {1, 1, 1, 7}, 0.5, black, 0xffffffffU);
    constexpr double cut =
        (1 - std::numbers::pi / 4) / 2; // two corners of a quarter pixel's square
    EXPECT_NEAR(qRed(thin.pixel(1, 1)), 255 * (1 - cut * cut), 1);
}

} // namespace
} // namespace lumacap
