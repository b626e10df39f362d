#include "platform/kwin/capture/PicturePipe.h"

#include <QCoroTask>
#include <QTimer>

#include <array>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace lumacap::kwin {

namespace {

constexpr PixelFormat opaquePixels{QImage::Format_RGB32, 32, 0xff000000};

PictureLayout layout(QSize size, qsizetype bytesPerLine)
{
    return {size, bytesPerLine, opaquePixels};
}

/// Writes `words` into the pipe, a few at a time, and closes it.
std::jthread writer(PicturePipe &pipe, std::vector<std::uint32_t> words)
{
    const int descriptor = dup(pipe.write.fileDescriptor());
    pipe.write = {};
    return std::jthread([descriptor, words = std::move(words)] {
        const auto *next = reinterpret_cast<const char *>(words.data());
        std::size_t left = words.size() * sizeof(std::uint32_t);
        while (left > 0) {
            const ssize_t written = write(descriptor, next, std::min<std::size_t>(left, 70'001));
            if (written <= 0)
                break;
            next += written;
            left -= static_cast<std::size_t>(written);
        }
        close(descriptor);
    });
}

Result<QImage> received(const PicturePipe &pipe, const PictureLayout &expected,
                        std::chrono::milliseconds limit = 20s)
{
    return QCoro::waitFor(readPicture(pipe.read, expected, QDeadlineTimer(limit)));
}

} // namespace

TEST(PicturePipeTest, aPictureLargerThanThePipeComesWholeAndOpaque)
{
    constexpr int width = 1000;
    constexpr int height = 700;
    std::vector<std::uint32_t> words(width * height);
    for (std::size_t index = 0; index < words.size(); ++index)
        words[index] = static_cast<std::uint32_t>(index * 2'654'435'761u); // any highest byte
    auto pipe = PicturePipe::open();
    ASSERT_TRUE(pipe);
    const std::jthread writing = writer(*pipe, words);
    const auto picture = received(*pipe, layout({width, height}, width * qsizetype{4}));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->format(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y) {
        const auto *const row = reinterpret_cast<const std::uint32_t *>(picture->constScanLine(y));
        for (int x = 0; x < width; ++x) {
            const std::size_t index =
                static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x);
            ASSERT_EQ(row[x], words[index] | 0xff000000) << x << ", " << y;
        }
    }
}

TEST(PicturePipeTest, thePaddingOfRowsIsLeftOut)
{
    auto pipe = PicturePipe::open();
    ASSERT_TRUE(pipe);
    const std::jthread writing =
        writer(*pipe, {0x112233, 0x445566, 0xdeadbeef, 0x778899, 0xaabbcc, 0xdeadbeef});
    const auto picture = received(*pipe, layout({2, 2}, 12));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->bytesPerLine(), 8);
    EXPECT_EQ(picture->pixel(0, 0), 0xff112233u);
    EXPECT_EQ(picture->pixel(1, 0), 0xff445566u);
    EXPECT_EQ(picture->pixel(0, 1), 0xff778899u);
    EXPECT_EQ(picture->pixel(1, 1), 0xffaabbccu);
}

TEST(PicturePipeTest, aPictureThatEndsTooSoonIsAFailure)
{
    auto pipe = PicturePipe::open();
    ASSERT_TRUE(pipe);
    const std::jthread writing = writer(*pipe, {1, 2, 3});
    EXPECT_FALSE(received(*pipe, layout({2, 2}, 8)));
}

TEST(PicturePipeTest, whatComesAfterThePictureIsLeftAlone)
{
    auto pipe = PicturePipe::open();
    ASSERT_TRUE(pipe);
    const std::jthread writing = writer(*pipe, {1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(received(*pipe, layout({2, 2}, 8)));
}

TEST(PicturePipeTest, aWriterThatStopsIsWaitedForInATurningLoopAndNotForEver)
{
    const auto pipe = PicturePipe::open(); // which stays open for writing
    ASSERT_TRUE(pipe);
    constexpr std::array<char, 5> beginning{};
    ASSERT_EQ(write(pipe->write.fileDescriptor(), beginning.data(), beginning.size()), 5);
    int turns = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, &turning, [&turns] { ++turns; });
    turning.start(1ms);
    EXPECT_FALSE(received(*pipe, layout({2, 2}, 8), 60ms));
    EXPECT_GT(turns, 0);
}

} // namespace lumacap::kwin
