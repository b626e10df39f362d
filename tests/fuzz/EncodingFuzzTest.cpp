#include "capture/encoding/JpegEncoder.h"
#include "capture/encoding/PngEncoder.h"
#include "capture/encoding/TiffEncoder.h"

#include "DecodedPng.h"
#include "Samples.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <random>

#include <gtest/gtest.h>

using namespace lumacap;
using namespace lumacap::samples;

namespace {

/// Random pictures and ways to encode them, all from one number.
class Draw {
public:
    explicit Draw(std::uint32_t seed)
        : m_random(seed)
    {
    }

    int between(int least, int most)
    {
        return std::uniform_int_distribution(least, most)(m_random);
    }

    QImage picture(Alpha alpha)
    {
        constexpr std::array contents{Content::Noise, Content::GrainyGradient, Content::Flat,
                                      Content::Letters};
        const QSize size(between(1, 300), between(1, 200));
        const Content content = contents.at(static_cast<std::size_t>(between(0, 3)));
        QImage image = sample(size, content, alpha, static_cast<std::uint32_t>(m_random()));
        for (int patch = between(0, 3); patch > 0; --patch)
            overwrite(image, alpha);
        return withWideRows(image, 4 * between(0, 16));
    }

private:
    /// Lays a rectangle of other content into the picture, so that rows and strips are of mixed
    /// kinds.
    void overwrite(QImage &image, Alpha alpha)
    {
        const int left = between(0, image.width() - 1);
        const int top = between(0, image.height() - 1);
        for (int y = top; y < std::min(image.height(), top + between(1, 60)); ++y) {
            for (int x = left; x < std::min(image.width(), left + 50); ++x) {
                const int opacity = alpha == Alpha::Opaque ? 255 : between(0, 255);
                image.setPixel(x, y,
                               qPremultiply(qRgba(x * y % 256, y % 7 * 30, x % 256, opacity)));
            }
        }
        if (alpha == Alpha::Translucent)
            image.setPixel(0, 0, 0);
    }

    std::mt19937 m_random;
};

std::uint32_t firstSeed()
{
    const QByteArray given = qgetenv("LUMACAP_FUZZ_SEED");
    return given.isEmpty() ? std::random_device{}() : given.toUInt();
}

/// Calls `check` with one seed after the other for `time`, or until one fails.
template <class Check>
void repeat(std::chrono::seconds time, Check check)
{
    const auto end = std::chrono::steady_clock::now() + time;
    std::uint32_t seed = firstSeed();
    do {
        SCOPED_TRACE("run again with LUMACAP_FUZZ_SEED=" + std::to_string(seed));
        check(seed++);
    } while (std::chrono::steady_clock::now() < end && !::testing::Test::HasFailure());
}

} // namespace

TEST(EncodingFuzz, everyPngComesBackFromBothDecoders)
{
    repeat(std::chrono::seconds(6), [](std::uint32_t seed) {
        Draw draw(seed);
        const Alpha alpha = draw.between(0, 1) == 0 ? Alpha::Opaque : Alpha::Translucent;
        const QImage image = draw.picture(alpha);
        const DecodedPng expected{.size = image.size(),
                                  .channels = alpha == Alpha::Opaque ? 3 : 4,
                                  .pixels = storedPixels(image, alpha)};
        const PngWork work{.library = DeflateLibrary::Zlib,
                           .workers = draw.between(1, 4),
                           .rowsAStrip = draw.between(1, 210)};
        for (const DeflateLibrary library : deflateLibraries()) {
            const auto file = encodePng(
                image,
                {.library = library, .workers = work.workers, .rowsAStrip = work.rowsAStrip});
            ASSERT_TRUE(file);
            EXPECT_TRUE(decodedByLibpng(*file) == expected);
            EXPECT_TRUE(decodedByLodepng(*file) == expected);
            EXPECT_TRUE(isWellFormed(*file));
        }
    });
}

TEST(EncodingFuzz, everyPictureBecomesAJpegAndATiffOfItsSize)
{
    repeat(std::chrono::seconds(3), [](std::uint32_t seed) {
        Draw draw(seed);
        const Alpha alpha = draw.between(0, 1) == 0 ? Alpha::Opaque : Alpha::Translucent;
        const QImage image = draw.picture(alpha);
        const auto jpeg = encodeJpeg(image);
        ASSERT_TRUE(jpeg);
        EXPECT_EQ(QImage::fromData(*jpeg, "JPEG").size(), image.size());
        const auto tiff = encodeTiff(image);
        ASSERT_TRUE(tiff);
        // Uncompressed: every row of pixels is in the file as it is.
        const QByteArray pixels = storedPixels(image, alpha);
        EXPECT_TRUE(tiff->contains(pixels));
    });
}
