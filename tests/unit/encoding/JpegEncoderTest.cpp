#include "capture/encoding/JpegEncoder.h"

#include "Samples.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>
#include <jpeglib.h>

using namespace lumacap;
using namespace lumacap::samples;

namespace {

struct DecodedJpeg {
    QSize size;
    bool isFullColour = false;
    std::vector<uchar> rgb;
};

/// Read by libjpeg, which ends the program with a message where the file is damaged.
DecodedJpeg decoded(const QByteArray &file)
{
    jpeg_decompress_struct library{};
    jpeg_error_mgr errors{};
    library.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&library);
    jpeg_mem_src(&library, reinterpret_cast<const unsigned char *>(file.constData()),
                 static_cast<unsigned long>(file.size()));
    EXPECT_EQ(jpeg_read_header(&library, TRUE), JPEG_HEADER_OK);
    DecodedJpeg result;
    result.isFullColour = library.num_components == 3;
    for (int component = 0; component < library.num_components; ++component)
        result.isFullColour = result.isFullColour && library.comp_info[component].h_samp_factor == 1
            && library.comp_info[component].v_samp_factor == 1;
    library.out_color_space = JCS_RGB;
    jpeg_start_decompress(&library);
    result.size =
        QSize(static_cast<int>(library.output_width), static_cast<int>(library.output_height));
    const std::size_t rowBytes = std::size_t{library.output_width} * 3;
    result.rgb.resize(rowBytes * library.output_height);
    while (library.output_scanline < library.output_height) {
        uchar *row = result.rgb.data() + rowBytes * library.output_scanline;
        jpeg_read_scanlines(&library, &row, 1);
    }
    jpeg_finish_decompress(&library);
    EXPECT_EQ(errors.num_warnings, 0);
    jpeg_destroy_decompress(&library);
    return result;
}

int largestDifference(const std::vector<uchar> &pixels, const QByteArray &expected)
{
    EXPECT_EQ(pixels.size(), static_cast<std::size_t>(expected.size()));
    int largest = 0;
    for (std::size_t at = 0; at < pixels.size(); ++at) {
        const int wanted = static_cast<uchar>(expected[static_cast<qsizetype>(at)]);
        largest = std::max(largest, std::abs(pixels[at] - wanted));
    }
    return largest;
}

/// Colours that change slowly, as JPEG is made for.
QImage slowColours(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(40 + x / 2 % 200, 30 + y / 2 % 200, 90));
    }
    return image;
}

} // namespace

TEST(JpegEncoder, slowColoursComeBackAlmostTheSame)
{
    for (const QSize size : {QSize(1, 1), QSize(7, 13), QSize(320, 201)}) {
        const QImage image = slowColours(size);
        const auto file = encodeJpeg(image);
        ASSERT_TRUE(file);
        const DecodedJpeg back = decoded(*file);
        EXPECT_EQ(back.size, size);
        EXPECT_LE(largestDifference(back.rgb, storedPixels(image, Alpha::Opaque)), 5);
    }
}

TEST(JpegEncoder, colourIsStoredAsSharpAsBrightness)
{
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            image.setPixel(x, y, x % 2 == 0 ? qRgb(200, 60, 60) : qRgb(60, 60, 200));
    }
    const auto file = encodeJpeg(image);
    ASSERT_TRUE(file);
    const DecodedJpeg back = decoded(*file);
    EXPECT_TRUE(back.isFullColour);
    EXPECT_LE(largestDifference(back.rgb, storedPixels(image, Alpha::Opaque)), 24);
}

TEST(JpegEncoder, translucentPixelsAreLaidOverWhite)
{
    QImage image(32, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(qPremultiply(qRgba(255, 0, 0, 128)));
    const auto file = encodeJpeg(image);
    ASSERT_TRUE(file);
    const QByteArray pink = QByteArray("\xff\x7f\x7f", 3).repeated(qsizetype{32} * 16);
    EXPECT_LE(largestDifference(decoded(*file).rgb, pink), 3);

    image.fill(Qt::transparent);
    const auto clear = encodeJpeg(image);
    ASSERT_TRUE(clear);
    EXPECT_EQ(largestDifference(decoded(*clear).rgb, QByteArray(qsizetype{32} * 16 * 3, '\xff')),
              0);
}

TEST(JpegEncoder, gapsBetweenTheRowsAreLeftOut)
{
    const QImage image = sample(QSize(33, 21), Content::Letters, Alpha::Translucent);
    EXPECT_EQ(encodeJpeg(withWideRows(image, 28)), encodeJpeg(image));
}

TEST(JpegEncoder, theLongestSideIsAccepted)
{
    EXPECT_TRUE(encodeJpeg(sample(QSize(65500, 1), Content::Flat, Alpha::Opaque)));
    EXPECT_TRUE(encodeJpeg(sample(QSize(1, 65500), Content::Flat, Alpha::Opaque)));
}

TEST(JpegEncoder, aLongerSideIsAFailureThatNamesTheLimit)
{
    for (const QSize size : {QSize(65501, 1), QSize(1, 65501)}) {
        const auto file = encodeJpeg(sample(size, Content::Flat, Alpha::Opaque));
        ASSERT_FALSE(file);
        EXPECT_TRUE(file.error().description.contains(QStringLiteral("65500")));
    }
}

TEST(JpegEncoder, nullImageIsAFailure)
{
    EXPECT_EQ(encodeJpeg(QImage()), failure(QStringLiteral("there is no image to encode")));
}
