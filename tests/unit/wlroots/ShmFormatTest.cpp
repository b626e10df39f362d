#include "platform/wlroots/ShmFormat.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include <wayland-client-protocol.h>

namespace lumacap::wlroots {

struct Pixel {
    const char *name;
    std::uint32_t format;
    /// As it lies in memory, of the colour 255, 128, 4.
    std::array<std::uint8_t, 4> bytes;
};

class ShmFormat : public testing::TestWithParam<Pixel> { };

TEST_P(ShmFormat, isReadAsTheColourItIs)
{
    const auto format = pixelFormatOf(GetParam().format);
    ASSERT_TRUE(format.has_value());
    QImage picture(1, 1, format->format);
    std::memcpy(picture.bits(), GetParam().bytes.data(),
                static_cast<std::size_t>(format->bitsPerPixel / 8));

    const QImage opaque = opaqueImage(picture, *format);

    EXPECT_EQ(opaque.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(opaque.pixel(0, 0), qRgba(255, 128, 4, 255));
}

// Ten bits of 1023, 514 and 16 are eight of 255, 128 and 4; six of 32 are 130.
INSTANTIATE_TEST_SUITE_P(
    Of, ShmFormat,
    testing::Values(Pixel{"XRGB8888", WL_SHM_FORMAT_XRGB8888, {4, 128, 255, 0}},
                    Pixel{"ARGB8888", WL_SHM_FORMAT_ARGB8888, {4, 128, 255, 9}},
                    Pixel{"XBGR8888", WL_SHM_FORMAT_XBGR8888, {255, 128, 4, 0}},
                    Pixel{"ABGR8888", WL_SHM_FORMAT_ABGR8888, {255, 128, 4, 9}},
                    Pixel{"XRGB2101010", WL_SHM_FORMAT_XRGB2101010, {0x10, 0x08, 0xf8, 0x3f}},
                    Pixel{"ARGB2101010", WL_SHM_FORMAT_ARGB2101010, {0x10, 0x08, 0xf8, 0x7f}},
                    Pixel{"XBGR2101010", WL_SHM_FORMAT_XBGR2101010, {0xff, 0x0b, 0x08, 0x01}},
                    Pixel{"ABGR2101010", WL_SHM_FORMAT_ABGR2101010, {0xff, 0x0b, 0x08, 0xc1}},
                    Pixel{"RGB888", WL_SHM_FORMAT_RGB888, {4, 128, 255, 0}},
                    Pixel{"BGR888", WL_SHM_FORMAT_BGR888, {255, 128, 4, 0}}),
    [](const auto &pixel) { return pixel.param.name; });

TEST(ShmFormats, holdSixteenBitColours)
{
    const auto format = pixelFormatOf(WL_SHM_FORMAT_RGB565);
    ASSERT_TRUE(format.has_value());
    QImage picture(1, 1, format->format);
    *reinterpret_cast<quint16 *>(picture.bits()) = 0xf800;

    EXPECT_EQ(opaqueImage(picture, *format).pixel(0, 0), qRgb(255, 0, 0));
}

TEST(ShmFormats, leaveOutWhatNoPictureIsMadeOf)
{
    EXPECT_FALSE(pixelFormatOf(WL_SHM_FORMAT_NV12).has_value());
    EXPECT_FALSE(pixelFormatOf(0xffffffff).has_value());
}

} // namespace lumacap::wlroots
