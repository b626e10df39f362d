#include "capture/encoding/Pixels.h"

#include "Samples.h"

#include <vector>

#include <gtest/gtest.h>

using namespace lumacap;
using namespace lumacap::samples;

TEST(Pixels, aRowOfAnyWidthIsPackedInTheOrderRedGreenBlue)
{
    for (int width = 1; width <= 9; ++width) {
        std::vector<QRgb> row;
        std::vector<uchar> expected;
        for (int column = 0; column < width; ++column) {
            row.push_back(qRgb(3 * column, 100 + column, 255 - column));
            expected.insert(expected.end(),
                            {static_cast<uchar>(3 * column), static_cast<uchar>(100 + column),
                             static_cast<uchar>(255 - column)});
        }
        std::vector<uchar> packed(row.size() * 3);
        packRgb(row, packed);
        EXPECT_EQ(packed, expected) << width;
    }
}

TEST(Pixels, aRowIsOpaqueWhereEveryPixelIs)
{
    std::vector<QRgb> row(37, qRgb(0, 0, 0));
    EXPECT_TRUE(isOpaqueRow(row));
    for (const std::size_t place : {0UL, 17UL, 36UL}) {
        std::vector<QRgb> changed = row;
        changed[place] = qRgba(0, 0, 0, 254);
        EXPECT_FALSE(isOpaqueRow(changed)) << place;
    }
}

TEST(Pixels, anImageIsOpaqueDownToItsLastRow)
{
    QImage image = sample(QSize(5, 9), Content::Flat, Alpha::Opaque);
    EXPECT_TRUE(isOpaque(image));
    image.setPixel(4, 8, qRgba(1, 1, 1, 1));
    EXPECT_FALSE(isOpaque(image));
}

TEST(Pixels, aPremultipliedImageIsSharedAndNotCopied)
{
    const QImage image = sample(QSize(5, 9), Content::Flat, Alpha::Opaque);
    EXPECT_EQ(premultipliedPixels(image).constBits(), image.constBits());
}
