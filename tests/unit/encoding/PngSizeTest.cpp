#include "BusyFrame.h"
#include "Samples.h"
#include "capture/encoding/PngEncoder.h"

#include <gtest/gtest.h>
#include <png.h>

using namespace lumacap;
using namespace lumacap::samples;

namespace {

using Frame = QImage (*)(QSize);

/// The size of the file that libpng makes of an opaque picture with its own settings, level 6.
qsizetype sizeByLibpng(const QImage &image)
{
    const QByteArray rgb = storedPixels(image, Alpha::Opaque);
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.width());
    header.height = static_cast<png_uint_32>(image.height());
    header.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    const int written =
        png_image_write_get_memory_size(header, size, 0, rgb.constData(), 0, nullptr);
    return written == 0 ? 0 : static_cast<qsizetype>(size);
}

class PngSize : public ::testing::TestWithParam<std::pair<Frame, const char *>> { };

} // namespace

TEST_P(PngSize, isAtMostATenthMoreThanLibpngs)
{
    const QImage image = GetParam().first(QSize(1920, 720));
    const qsizetype byLibpng = sizeByLibpng(image);
    ASSERT_GT(byLibpng, 0);
    for (const DeflateLibrary library : deflateLibraries()) {
        const auto file = encodePng(image, {.library = library, .workers = 2, .rowsAStrip = 180});
        ASSERT_TRUE(file);
        EXPECT_LE(static_cast<double>(file->size()), 1.1 * static_cast<double>(byLibpng));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, PngSize,
                         ::testing::Values(std::pair(&bench::busyFrame, "ABusyScreen"),
                                           std::pair(&bench::textFrame, "Text"),
                                           std::pair(&bench::photographFrame, "APhotograph")),
                         [](const auto &instance) { return instance.param.second; });
