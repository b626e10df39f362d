#include "platform/pixels/PixelFormat.h"

#include <gtest/gtest.h>

namespace lumacap {

TEST(OpaqueImage, isOpaqueWhateverTheServerLeftInTheUnusedByte)
{
    QImage picture(2, 1, QImage::Format_RGB32);
    auto *const row = reinterpret_cast<QRgb *>(picture.scanLine(0));
    row[0] = 0x00112233;
    row[1] = 0x7fa0b0c0;

    const QImage opaque = opaqueImage(picture, {QImage::Format_RGB32, 32, 0xff000000});

    EXPECT_EQ(opaque.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(opaque.pixel(0, 0), 0xff112233);
    EXPECT_EQ(opaque.pixel(1, 0), 0xffa0b0c0);
}

TEST(OpaqueImage, changesAPictureOfThirtyTwoBitsInItsOwnMemory)
{
    QImage picture(2, 1, QImage::Format_RGB32);
    const uchar *const memory = picture.constBits();

    const QImage opaque = opaqueImage(std::move(picture), {QImage::Format_RGB32, 32, 0xff000000});

    EXPECT_EQ(opaque.constBits(), memory);
}

TEST(OpaqueImage, keepsTheUpperBitsOfThirtyBitColours)
{
    QImage picture(1, 1, QImage::Format_RGB30);
    *reinterpret_cast<QRgb *>(picture.scanLine(0)) = (0x3ffU << 20U) | (0x200U << 10U) | 0x004U;

    const QImage opaque = opaqueImage(picture, {QImage::Format_RGB30, 32, 0xc0000000});

    EXPECT_EQ(opaque.pixel(0, 0), qRgb(255, 128, 1));
}

TEST(OpaqueImage, widensSixteenBitColours)
{
    QImage picture(1, 1, QImage::Format_RGB16);
    *reinterpret_cast<quint16 *>(picture.scanLine(0)) = 0xf800;

    EXPECT_EQ(opaqueImage(picture, {QImage::Format_RGB16, 16, 0}).pixel(0, 0), qRgb(255, 0, 0));
}

} // namespace lumacap
