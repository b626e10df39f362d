#include "platform/gnome/module/VideoPixels.h"

#include <array>
#include <vector>

#include <gmock/gmock.h>

namespace lumacap::gnome {

namespace {

std::vector<std::byte> bytesOf(std::initializer_list<int> values)
{
    std::vector<std::byte> bytes;
    for (const int value : values)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

} // namespace

TEST(VideoPixels, areOpaqueWhateverTheFourthByteHolds)
{
    const auto bytes = bytesOf({0x33, 0x22, 0x11, 0x00, 0xc0, 0xb0, 0xa0, 0x7f});

    const auto picture = pictureOf(bytes, 8, {{2, 1}, ByteOrder::BlueGreenRed});

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(picture->pixel(0, 0), 0xff112233);
    EXPECT_EQ(picture->pixel(1, 0), 0xffa0b0c0);
}

TEST(VideoPixels, areReadInTheOtherOrderToo)
{
    const auto bytes = bytesOf({0x11, 0x22, 0x33, 0x00, 0xa0, 0xb0, 0xc0, 0x80});

    const auto picture = pictureOf(bytes, 8, {{2, 1}, ByteOrder::RedGreenBlue});

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixel(0, 0), 0xff112233);
    EXPECT_EQ(picture->pixel(1, 0), 0xffa0b0c0);
}

TEST(VideoPixels, leaveOutWhatPadsTheRows)
{
    // Two rows of one pixel, twelve bytes apart; nothing pads the last.
    const auto bytes = bytesOf({1, 2, 3, 4, 9, 9, 9, 9, 9, 9, 9, 9, 5, 6, 7, 8});

    const auto picture = pictureOf(bytes, 12, {{1, 2}, ByteOrder::BlueGreenRed});

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(1, 2));
    EXPECT_EQ(picture->pixel(0, 0), 0xff030201);
    EXPECT_EQ(picture->pixel(0, 1), 0xff070605);
}

TEST(VideoPixels, areCopied)
{
    auto bytes = bytesOf({1, 2, 3, 4});
    const auto picture = pictureOf(bytes, 4, {{1, 1}, ByteOrder::BlueGreenRed});

    bytes.assign(bytes.size(), std::byte{0xff});

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixel(0, 0), 0xff030201);
}

struct Lie {
    const char *name;
    std::size_t held;
    std::int32_t stride;
    QSize size;
};

class VideoLies : public testing::TestWithParam<Lie> { };

TEST_P(VideoLies, areNoPicture)
{
    const std::vector<std::byte> bytes(GetParam().held);

    EXPECT_FALSE(pictureOf(bytes, GetParam().stride, {GetParam().size, ByteOrder::BlueGreenRed}));
}

INSTANTIATE_TEST_SUITE_P(
    VideoPixels, VideoLies,
    testing::Values(Lie{"nothing", 0, 8, {2, 2}}, Lie{"oneByteShort", 15, 8, {2, 2}},
                    Lie{"rowsThatOverlap", 64, 4, {2, 2}}, Lie{"rowsFromTheBottom", 64, -8, {2, 2}},
                    Lie{"noStride", 64, 0, {2, 2}}, Lie{"noWidth", 64, 8, {0, 2}},
                    Lie{"noHeight", 64, 8, {2, 0}}, Lie{"negativeSize", 64, 8, {-2, -2}},
                    Lie{"moreThanThereIs", 64, 1'000'000'000, {2, 2'000'000'000}}),
    [](const auto &tested) { return std::string(tested.param.name); });

} // namespace lumacap::gnome
