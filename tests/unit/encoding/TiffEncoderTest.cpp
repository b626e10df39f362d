#include "capture/encoding/TiffEncoder.h"

#include "Samples.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>

#include <gtest/gtest.h>
#include <tiffio.h>

using namespace lumacap;
using namespace lumacap::samples;

namespace {

struct DecodedTiff {
    QSize size;
    int channels = 0;
    int extraSample = -1;
    QByteArray pixels;
};

/// Read by libtiff from a file, strip by strip.
DecodedTiff decoded(const QByteArray &bytes)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("picture.tiff")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    file.close();
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(
        TIFFOpen(QFile::encodeName(file.fileName()).constData(), "r"), &TIFFClose);
    DecodedTiff result;
    if (!tiff)
        return result;
    quint32 width = 0;
    quint32 height = 0;
    quint16 channels = 0;
    EXPECT_EQ(TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width), 1);
    EXPECT_EQ(TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height), 1);
    EXPECT_EQ(TIFFGetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &channels), 1);
    result.size = QSize(static_cast<int>(width), static_cast<int>(height));
    result.channels = channels;
    quint16 extraCount = 0;
    quint16 *extras = nullptr;
    if (TIFFGetField(tiff.get(), TIFFTAG_EXTRASAMPLES, &extraCount, &extras) == 1
        && extraCount == 1)
        result.extraSample = extras[0];
    QByteArray strip(TIFFStripSize(tiff.get()), 0);
    for (quint32 index = 0; index < TIFFNumberOfStrips(tiff.get()); ++index) {
        const tmsize_t size = TIFFReadEncodedStrip(tiff.get(), index, strip.data(), strip.size());
        EXPECT_GT(size, 0);
        result.pixels.append(strip.first(std::max<tmsize_t>(0, size)));
    }
    return result;
}

} // namespace

TEST(TiffEncoder, opaquePicturesComeBackWithoutAlpha)
{
    for (const QSize size : {QSize(1, 1), QSize(13, 7), QSize(641, 480)}) {
        const QImage image = sample(size, Content::Noise, Alpha::Opaque);
        const auto file = encodeTiff(image);
        ASSERT_TRUE(file);
        const DecodedTiff back = decoded(*file);
        EXPECT_EQ(back.size, size);
        EXPECT_EQ(back.channels, 3);
        EXPECT_EQ(back.extraSample, -1);
        EXPECT_EQ(back.pixels, storedPixels(image, Alpha::Opaque));
    }
}

TEST(TiffEncoder, translucentPicturesComeBackWithTheirAlpha)
{
    for (const QSize size : {QSize(1, 1), QSize(13, 7), QSize(641, 480)}) {
        const QImage image = sample(size, Content::Noise, Alpha::Translucent);
        const auto file = encodeTiff(image);
        ASSERT_TRUE(file);
        const DecodedTiff back = decoded(*file);
        EXPECT_EQ(back.channels, 4);
        EXPECT_EQ(back.extraSample, EXTRASAMPLE_UNASSALPHA);
        EXPECT_EQ(back.pixels, storedPixels(image, Alpha::Translucent));
    }
}

TEST(TiffEncoder, gapsBetweenTheRowsAreLeftOut)
{
    const QImage image = sample(QSize(33, 21), Content::Letters, Alpha::Translucent);
    EXPECT_EQ(encodeTiff(withWideRows(image, 28)), encodeTiff(image));
}

TEST(TiffEncoder, nothingIsPrintedAndTheSameImageGivesTheSameBytes)
{
    const QImage image = sample(QSize(200, 100), Content::Letters, Alpha::Translucent);
    ::testing::internal::CaptureStderr();
    const auto first = encodeTiff(image);
    const auto second = encodeTiff(image);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    ASSERT_TRUE(first);
    EXPECT_EQ(first, second);
}

TEST(TiffEncoder, nullImageIsAFailure)
{
    EXPECT_EQ(encodeTiff(QImage()), failure(QStringLiteral("there is no image to encode")));
}
