#include "annotation/frame/AlignedFill.h"

#include "Pixels.h"

#include <gtest/gtest.h>

namespace lumacap {
namespace {

constexpr Rgb white{1, 1, 1};
constexpr Rgb black{0, 0, 0};

QImage blackPicture()
{
    return filled(6, 4, 0xff000000U);
}

/// The level of the grey at a pixel, counted from the picture's upper left corner.
int levelAt(const QImage &picture, int x, int y)
{
    return qGreen(picture.pixel(x, y));
}

TEST(AlignedFill, fillsWholePixelsFromTheLowerEdgeUp)
{
    QImage picture = blackPicture();
    AlignedFill(picture, 1, QRect()).fill({{1, 0}, {4, 3}}, white, 1);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(levelAt(picture, x, y), x >= 1 && x < 5 && y >= 1 ? 255 : 0);
    }
}

TEST(AlignedFill, coversAPixelByItsShare)
{
    QImage picture = blackPicture();
    AlignedFill(picture, 1, QRect()).fill({{1.75, 1.5}, {2.5, 2}}, white, 1);
    // columns 1 … 4 by 1/4, 1, 1, 1/4; rows 0 … 2 (from the top) by 1/2, 1, 1/2
    EXPECT_EQ(levelAt(picture, 0, 1), 0);
    EXPECT_EQ(levelAt(picture, 1, 1), 64);
    EXPECT_EQ(levelAt(picture, 2, 1), 255);
    EXPECT_EQ(levelAt(picture, 4, 1), 64);
    EXPECT_EQ(levelAt(picture, 5, 1), 0);
    EXPECT_EQ(levelAt(picture, 2, 0), 128);
    EXPECT_EQ(levelAt(picture, 1, 2), 32);
    EXPECT_EQ(levelAt(picture, 2, 3), 0);
}

TEST(AlignedFill, keepsWhatLiesWithinOnePixel)
{
    QImage picture = blackPicture();
    AlignedFill(picture, 1, QRect()).fill({{2.25, 1.25}, {0.5, 0.5}}, white, 0.8);
    EXPECT_EQ(levelAt(picture, 2, 2), 51);
    EXPECT_EQ(levelAt(picture, 1, 2), 0);
    EXPECT_EQ(levelAt(picture, 3, 2), 0);
}

TEST(AlignedFill, scalesPointsToPixels)
{
    QImage picture = blackPicture();
    AlignedFill(picture, 2, QRect()).fill({{1, 0.5}, {0.5, 0.5}}, white, 1);
    EXPECT_EQ(levelAt(picture, 2, 2), 255);
    EXPECT_EQ(levelAt(picture, 1, 2), 0);
    EXPECT_EQ(levelAt(picture, 3, 2), 0);
    EXPECT_EQ(levelAt(picture, 2, 1), 0);
    EXPECT_EQ(levelAt(picture, 2, 3), 0);
}

TEST(AlignedFill, mixesByAlpha)
{
    QImage picture = filled(6, 4, qRgb(255, 100, 0));
    AlignedFill(picture, 1, QRect()).fill({{0, 0}, {6, 4}}, {0, 0, 1}, 0.4);
    EXPECT_EQ(picture.pixel(3, 2), qRgb(153, 60, 102));
}

TEST(AlignedFill, leavesAPremultipliedPixelOnATransparentPicture)
{
    QImage picture = filled(6, 4, 0);
    AlignedFill(picture, 1, QRect()).fill({{0, 0}, {6, 4}}, {1, 0, 0.2}, 0.6);
    EXPECT_EQ(reinterpret_cast<const QRgb *>(picture.constScanLine(1))[1], qRgba(153, 0, 31, 153));
}

TEST(AlignedFill, cutsOffWhatLiesOutsideThePicture)
{
    QImage picture = blackPicture();
    AlignedFill fill(picture, 1, QRect());
    fill.fill({{-3, -5}, {20, 7}}, white, 1);
    fill.fill({{-5, 2}, {4, 1}}, white, 1);
    fill.fill({{6, 2}, {4, 1}}, white, 1);
    fill.fill({{0, 4}, {4, 9}}, white, 1);
    EXPECT_EQ(levelAt(picture, 0, 2), 255);
    EXPECT_EQ(levelAt(picture, 5, 3), 255);
    EXPECT_EQ(levelAt(picture, 0, 1), 0);
    EXPECT_EQ(levelAt(picture, 5, 0), 0);
}

TEST(AlignedFill, doesNothingForAnEmptyRectangle)
{
    QImage picture = blackPicture();
    AlignedFill fill(picture, 1, QRect());
    fill.fill({{1, 1}, {0, 2}}, white, 1);
    fill.fill({{1, 1}, {2, 0}}, white, 1);
    EXPECT_EQ(picture, blackPicture());
}

TEST(AlignedFill, leavesOutOnlyWhatIsHiddenAltogether)
{
    QImage picture = blackPicture();
    AlignedFill fill(picture, 1, QRect(1, 1, 3, 3));
    fill.fill({{1.5, 0.5}, {2, 2}}, white, 1);
    EXPECT_EQ(picture, blackPicture());
    fill.fill({{1.5, 1}, {3, 1}}, white, 1);
    EXPECT_EQ(levelAt(picture, 2, 2), 255);
    EXPECT_EQ(levelAt(picture, 4, 2), 128);
}

TEST(AlignedFill, fillsEverythingButTheHidden)
{
    QImage picture = filled(6, 4, 0xffffffffU);
    AlignedFill(picture, 3, QRect(1, 1, 3, 2)).fillEverything(black);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(levelAt(picture, x, y), QRect(1, 1, 3, 2).contains(x, y) ? 255 : 0);
    }
}

} // namespace
} // namespace lumacap
