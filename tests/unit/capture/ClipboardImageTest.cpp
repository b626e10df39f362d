#include "capture/ClipboardImage.h"

#include <QColorSpace>
#include <QImageReader>

#include <gmock/gmock.h>

namespace lumacap {

namespace {

/// Every pixel another, none at the edge of a range, so that a swapped channel or row shows.
QImage sample()
{
    QImage image(31, 17, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor(20 + 7 * x, 250 - 11 * y, (x * y) % 256));
    }
    return image;
}

/// The pixels alone: a file may also name its colour space.
QImage opaque(const QByteArray &bytes, const char *format)
{
    QImage image = QImage::fromData(bytes, format).convertToFormat(QImage::Format_RGB32);
    image.setColorSpace(QColorSpace());
    return image;
}

} // namespace

TEST(ClipboardImage, offersPngFirstAndTheTypesThatProgramsAskFor)
{
    EXPECT_THAT(ClipboardImage(sample()).types(),
                testing::ElementsAre("image/png", "image/jpeg", "image/bmp", "image/tiff",
                                     "application/x-qt-image"));
}

TEST(ClipboardImage, givesTheSamePixelsInEveryLosslessType)
{
    const QImage expected = sample().convertToFormat(QImage::Format_RGB32);
    ClipboardImage item(sample());

    EXPECT_EQ(opaque(item.bytes("image/bmp"), "BMP"), expected);
    EXPECT_EQ(opaque(item.bytes("image/png"), "PNG"), expected);
    EXPECT_EQ(opaque(item.bytes("application/x-qt-image"), "PNG"), expected);
}

TEST(ClipboardImage, stillGivesTheOtherTypesAfterThePngWasMade)
{
    const QImage expected = sample().convertToFormat(QImage::Format_RGB32);
    ClipboardImage item(sample());
    ASSERT_FALSE(item.bytes("image/png").isEmpty());

    EXPECT_EQ(opaque(item.bytes("image/bmp"), "BMP"), expected);
    EXPECT_TRUE(item.bytes("image/jpeg").startsWith("\xff\xd8\xff"));
    EXPECT_TRUE(item.bytes("image/tiff").startsWith("II*"));
}

TEST(ClipboardImage, makesEachTypeOnce)
{
    ClipboardImage item(sample());

    for (const QByteArray &type : item.types())
        EXPECT_EQ(item.bytes(type).constData(), item.bytes(type).constData()) << type.toStdString();
}

TEST(ClipboardImage, shrunkGivesAllTypesOfAPictureAboveTheToolkitsLimitToo)
{
    QImage picture(8200, 4200, QImage::Format_ARGB32_Premultiplied);
    ASSERT_GT(picture.sizeInBytes(), qsizetype{QImageReader::allocationLimit()} << 20);
    picture.fill(Qt::red);
    ClipboardImage item(picture);
    item.shrink();

    EXPECT_TRUE(item.bytes("image/jpeg").startsWith("\xff\xd8\xff"));
    EXPECT_GT(QImageReader::allocationLimit(), 0) << "for what strangers send";
}

TEST(ClipboardImage, shrunkHoldsNoPixelsAndGivesAllTypes)
{
    const QImage picture = sample();
    const QImage expected = picture.convertToFormat(QImage::Format_RGB32);
    ClipboardImage item(picture);
    ASSERT_FALSE(item.bytes("image/bmp").isEmpty());
    ASSERT_FALSE(picture.isDetached()); // the item shares them
    item.shrink();
    EXPECT_TRUE(picture.isDetached());
    EXPECT_EQ(opaque(item.bytes("image/png"), "PNG"), expected);
    EXPECT_EQ(opaque(item.bytes("image/bmp"), "BMP"), expected);
}

} // namespace lumacap
