#include "annotation/frame/FramedImage.h"

#include "Pixels.h"
#include "ScriptedRandom.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumacap {
namespace {

using namespace Qt::StringLiterals;

std::optional<QImage> framed(const QImage &base, int scale)
{
    ScriptedRandom random(upperEnd);
    return renderFramedImage(base, u"Title"_s, FrameBackgroundStyle::DominantColor, scale, random);
}

TEST(FrameDegenerate, isMissingAroundANullImage)
{
    EXPECT_EQ(framed(QImage(), 1), std::nullopt);
}

TEST(FrameDegenerate, isMissingAtANegativeScale)
{
    EXPECT_EQ(framed(filled(400, 300, 0xff000000U), -1), std::nullopt);
    EXPECT_EQ(framed(filled(400, 300, 0xff000000U), std::numeric_limits<int>::min()), std::nullopt);
}

TEST(FrameDegenerate, isMissingWhenNoBitmapIsThatLarge)
{
    EXPECT_EQ(framed(filled(4, 4, 0xff000000U), std::numeric_limits<int>::max()), std::nullopt);
    EXPECT_EQ(framed(filled(4, 4, 0xff000000U), 10'000'000), std::nullopt);
}

TEST(FrameDegenerateDeathTest, stopsTheProgramAtAScaleOfNothing)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(framed(filled(4, 4, 0xff000000U), 0), "framed picture has a finite size");
    EXPECT_DEATH(framed(QImage(), 0), "framed picture has a finite size");
}

TEST(FrameDegenerate, surroundsASinglePixel)
{
    for (const int scale : {1, 2, 3}) {
        const QImage picture = framed(filled(1, 1, 0xff0000ffU), scale).value_or(QImage());
        EXPECT_EQ(picture.size(), QSize(1 + 120 * scale, 1 + 156 * scale));
    }
}

TEST(FrameDegenerate, roundsANarrowCardByHalfItsWidth)
{
    const QImage picture = framed(filled(9, 40, 0xff0000ffU), 1).value_or(QImage());
    EXPECT_EQ(picture.pixel(64, 116), qRgb(0, 0, 255));
    EXPECT_EQ(picture.pixel(64, 134), qRgb(0, 0, 255));
    EXPECT_LE(distance(picture.pixel(64, 135), levelsOver({0, 0, 1})), 10); // the circle's lowest
    EXPECT_NE(picture.pixel(60, 135), qRgb(0, 0, 255));
}

TEST(FrameDegenerate, takesABaseInAnyPixelFormat)
{
    QImage base(50, 40, QImage::Format_RGB888);
    base.fill(QColor(10, 200, 30));
    base.setDevicePixelRatio(2);
    const QImage picture = framed(base, 1).value_or(QImage());
    EXPECT_EQ(picture.size(), QSize(170, 196));
    EXPECT_EQ(picture.pixel(80, 115), qRgb(10, 200, 30));
}

} // namespace
} // namespace lumacap
