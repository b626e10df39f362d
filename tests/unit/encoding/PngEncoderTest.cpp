#include "capture/encoding/PngEncoder.h"

#include "DecodedPng.h"
#include "Samples.h"

#include <string>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumacap;
using namespace lumacap::samples;
using ::testing::Combine;
using ::testing::Values;
using ::testing::ValuesIn;

namespace {

DecodedPng expected(const QImage &image, Alpha alpha)
{
    return {.size = image.size(),
            .channels = alpha == Alpha::Opaque ? 3 : 4,
            .pixels = storedPixels(image, alpha)};
}

std::string name(DeflateLibrary library)
{
    return library == DeflateLibrary::IsaL ? "Isal" : "Zlib";
}

/// How many strips each picture is cut into.
using Case = std::tuple<QSize, Alpha, DeflateLibrary, int>;

std::string caseName(const ::testing::TestParamInfo<Case> &instance)
{
    const auto [size, alpha, library, strips] = instance.param;
    return std::to_string(size.width()) + "x" + std::to_string(size.height())
        + (alpha == Alpha::Opaque ? "Opaque" : "Translucent") + name(library)
        + std::to_string(strips) + "Strips";
}

class PngRoundTrip : public ::testing::TestWithParam<Case> { };

} // namespace

TEST_P(PngRoundTrip, bothDecodersFindTheSamePixels)
{
    const auto [size, alpha, library, strips] = GetParam();
    for (const Content content :
         {Content::Noise, Content::GrainyGradient, Content::Flat, Content::Letters}) {
        const QImage image = sample(size, content, alpha);
        const int rowsAStrip = (size.height() + strips - 1) / strips;
        const auto file =
            encodePng(image, {.library = library, .workers = 3, .rowsAStrip = rowsAStrip});
        ASSERT_TRUE(file);
        // The first pixel of a translucent sample is clear, so that it is translucent at every
        // size.
        EXPECT_EQ(decodedByLibpng(*file), expected(image, alpha));
        EXPECT_EQ(decodedByLodepng(*file), expected(image, alpha));
        EXPECT_TRUE(isWellFormed(*file));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, PngRoundTrip,
    Combine(Values(QSize(1, 1), QSize(1, 57), QSize(64, 1), QSize(3, 8), QSize(331, 207)),
            Values(Alpha::Opaque, Alpha::Translucent), ValuesIn(deflateLibraries()), Values(1)),
    caseName);
INSTANTIATE_TEST_SUITE_P(Strips, PngRoundTrip,
                         Combine(Values(QSize(127, 61)), Values(Alpha::Opaque, Alpha::Translucent),
                                 ValuesIn(deflateLibraries()), Values(2, 3, 4, 5, 6, 7, 8, 61)),
                         caseName);

TEST(PngEncoder, zlibIsThereOnEveryProcessor)
{
    EXPECT_THAT(deflateLibraries(), ::testing::Contains(DeflateLibrary::Zlib));
}

TEST(PngEncoder, opaquePictureHasNoAlphaChannel)
{
    const auto file = encodePng(sample(QSize(40, 30), Content::Letters, Alpha::Opaque));
    ASSERT_TRUE(file);
    EXPECT_EQ(decodedByLodepng(*file).value_or(DecodedPng()).channels, 3);
}

TEST(PngEncoder, oneTranslucentPixelAtTheEndBringsTheAlphaChannel)
{
    QImage image = sample(QSize(1000, 1000), Content::Letters, Alpha::Opaque);
    image.setPixel(999, 999, qRgba(100, 100, 100, 254));
    const auto file = encodePng(image);
    ASSERT_TRUE(file);
    EXPECT_EQ(decodedByLibpng(*file), expected(image, Alpha::Translucent));
}

TEST(PngEncoder, numberOfWorkersChangesNoByte)
{
    const QImage image = sample(QSize(400, 300), Content::GrainyGradient, Alpha::Translucent);
    const DeflateLibrary library = deflateLibraries().front();
    const auto alone = encodePng(image, {.library = library, .workers = 1, .rowsAStrip = 7});
    ASSERT_TRUE(alone);
    for (const int workers : {2, 3, 8, 64})
        EXPECT_EQ(encodePng(image, {.library = library, .workers = workers, .rowsAStrip = 7}),
                  alone);
}

TEST(PngEncoder, gapsBetweenTheRowsAreLeftOut)
{
    const QImage image = sample(QSize(33, 21), Content::Noise, Alpha::Translucent);
    const auto dense = encodePng(image);
    ASSERT_TRUE(dense);
    for (const int extraBytes : {4, 28, 4096})
        EXPECT_EQ(encodePng(withWideRows(image, extraBytes)), dense);
}

TEST(PngEncoder, otherPixelFormatsGiveTheSameFile)
{
    const QImage image = sample(QSize(50, 40), Content::Letters, Alpha::Opaque);
    const auto file = encodePng(image);
    ASSERT_TRUE(file);
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_RGB888,
                                        QImage::Format_ARGB32, QImage::Format_Grayscale8})
        EXPECT_EQ(encodePng(image.convertToFormat(format)), file) << format;
}

TEST(PngEncoder, fileHoldsNothingButHeaderColourSpaceAndPixels)
{
    QImage image = sample(QSize(50, 40), Content::Letters, Alpha::Opaque);
    image.setText(QStringLiteral("Author"), QStringLiteral("somebody"));
    image.setDotsPerMeterX(1234);
    const auto file = encodePng(image);
    ASSERT_TRUE(file);
    EXPECT_EQ(chunkNames(*file), QByteArrayList({"IHDR", "sRGB", "IDAT", "IEND"}));
}

TEST(PngEncoder, largePictureIsCutIntoStripsAndASmallOneIsNot)
{
    const auto large = encodePng(sample(QSize(1920, 1080), Content::Letters, Alpha::Opaque));
    const auto small = encodePng(sample(QSize(500, 500), Content::Letters, Alpha::Opaque));
    ASSERT_TRUE(large && small);
    EXPECT_GT(chunkNames(*large).count("IDAT"), 2);
    EXPECT_EQ(chunkNames(*small).count("IDAT"), 1);
}

TEST(PngEncoder, nullImageIsAFailure)
{
    EXPECT_EQ(encodePng(QImage()), failure(QStringLiteral("there is no image to encode")));
}
