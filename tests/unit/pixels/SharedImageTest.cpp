#include "platform/pixels/SharedImage.h"

#include <gtest/gtest.h>

#include <array>

#include <unistd.h>

namespace lumacap {

TEST(SharedImage, showsInThePictureWhatIsWrittenThroughTheDescriptor)
{
    auto shared = SharedImage::create(QSize(2, 2), QImage::Format_RGB32, 8);
    ASSERT_TRUE(shared.has_value());
    const int descriptor = shared->takeDescriptor();
    const std::array<QRgb, 4> pixels{0xff000001, 0xff000002, 0xff000003, 0xff000004};

    ASSERT_EQ(pwrite(descriptor, pixels.data(), sizeof pixels, 0), ssize_t{sizeof pixels});
    close(descriptor);

    const QImage image = std::move(*shared).takeImage();
    EXPECT_EQ(image.size(), QSize(2, 2));
    EXPECT_EQ(image.pixel(1, 0), 0xff000002);
    EXPECT_EQ(image.pixel(0, 1), 0xff000003);
}

TEST(SharedImage, isNotCutShortByWhoeverWritesIt)
{
    auto shared = SharedImage::create(QSize(2, 2), QImage::Format_RGB32, 8);
    ASSERT_TRUE(shared.has_value());
    const int descriptor = shared->takeDescriptor();

    EXPECT_NE(ftruncate(descriptor, 0), 0);
    close(descriptor);

    EXPECT_EQ(std::move(*shared).takeImage().pixel(1, 1), 0xff000000);
}

TEST(SharedImage, isAFailureWhereNoSuchMemoryCanBeHad)
{
    EXPECT_FALSE(SharedImage::create(QSize(0, 0), QImage::Format_RGB32, 0).has_value());
}

} // namespace lumacap
