#include "platform/wlroots/Upright.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <wayland-client-protocol.h>

namespace lumacap::wlroots {

namespace {

/// A picture of one character a pixel, and back.
QImage pictureOf(const std::vector<std::string> &rows)
{
    QImage picture(static_cast<int>(rows.front().size()), static_cast<int>(rows.size()),
                   QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(
                x, y, qRgb(0, 0, rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]));
    }
    return picture;
}

std::vector<std::string> rowsOf(const QImage &picture)
{
    std::vector<std::string> rows;
    for (int y = 0; y < picture.height(); ++y) {
        std::string row;
        for (int x = 0; x < picture.width(); ++x)
            row += static_cast<char>(qBlue(picture.pixel(x, y)));
        rows.push_back(row);
    }
    return rows;
}

} // namespace

struct Turned {
    const char *name;
    std::int32_t transform;
    /// What the output gets of a picture whose rows are "abc" and "def".
    std::vector<std::string> scannedOut;
};

class Upright : public testing::TestWithParam<Turned> { };

TEST_P(Upright, isThePictureThatThePersonSees)
{
    const QImage seen = upright(pictureOf(GetParam().scannedOut), GetParam().transform);

    EXPECT_EQ(rowsOf(seen), (std::vector<std::string>{"abc", "def"}));
    EXPECT_EQ(seen.format(), QImage::Format_ARGB32_Premultiplied);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Upright,
    testing::Values(
        Turned{"Normal", WL_OUTPUT_TRANSFORM_NORMAL, {"abc", "def"}},
        Turned{"Turned90", WL_OUTPUT_TRANSFORM_90, {"cf", "be", "ad"}},
        Turned{"Turned180", WL_OUTPUT_TRANSFORM_180, {"fed", "cba"}},
        Turned{"Turned270", WL_OUTPUT_TRANSFORM_270, {"da", "eb", "fc"}},
        Turned{"Flipped", WL_OUTPUT_TRANSFORM_FLIPPED, {"cba", "fed"}},
        Turned{"FlippedAndTurned90", WL_OUTPUT_TRANSFORM_FLIPPED_90, {"ad", "be", "cf"}},
        Turned{"FlippedAndTurned180", WL_OUTPUT_TRANSFORM_FLIPPED_180, {"def", "abc"}},
        Turned{"FlippedAndTurned270", WL_OUTPUT_TRANSFORM_FLIPPED_270, {"fc", "eb", "da"}}),
    [](const auto &turned) { return turned.param.name; });

TEST(UprightPicture, stays32BitWordsOfItsOwnWhenNothingIsTurned)
{
    QImage picture = pictureOf({"ab"});
    const uchar *const memory = picture.constBits();

    EXPECT_EQ(upright(std::move(picture), WL_OUTPUT_TRANSFORM_NORMAL).constBits(), memory);
}

} // namespace lumacap::wlroots
