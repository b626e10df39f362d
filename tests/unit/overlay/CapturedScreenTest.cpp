#include "overlay/CapturedScreen.h"

#include <gtest/gtest.h>

namespace lumacap::tests {
namespace {

TEST(CapturedScreen, isMeasuredInItsOwnPoints)
{
    const CapturedScreen screen{{{0, 0}, {1920, 1080}}, 2, {3840, 2160}, 1080};

    EXPECT_EQ(screen.bounds(), (Rect<Canvas>{{0, 0}, {1920, 1080}}));
}

TEST(CapturedScreen, besideTheFirstScreenOnlyTheOriginIsSubtracted)
{
    const CapturedScreen screen{{{-1280, 300}, {1280, 1024}}, 1, {1280, 1024}, 1080};

    EXPECT_EQ(screen.toCanvas(Point<Global>{-1280, 300}), (Point<Canvas>{0, 0}));
    EXPECT_EQ(screen.toCanvas(Point<Global>{-80, 900}), (Point<Canvas>{1200, 600}));
    EXPECT_EQ(screen.toGlobal({1200, 600}), (Point<Global>{-80, 900}));
    EXPECT_EQ(screen.toCanvas(Rect<Global>{{-80, 900}, {40, 30}}),
              (Rect<Canvas>{{1200, 600}, {40, 30}}));
}

TEST(CapturedScreen, ofAnotherDensityIsStretchedToItsOwnPoints)
{
    // A first screen at factor 2 makes a unit two pixels; this one, at factor 1, has 1920 points
    // on 960 units.
    const CapturedScreen screen{{{1920, 0}, {960, 540}}, 1, {1920, 1080}, 1080};

    EXPECT_EQ(screen.bounds().size, (Size{1920, 1080}));
    EXPECT_EQ(screen.toCanvas(Point<Global>{2400, 270}), (Point<Canvas>{960, 540}));
    EXPECT_EQ(screen.toGlobal({960, 540}), (Point<Global>{2400, 270}));
    EXPECT_EQ(screen.toCanvas(Rect<Global>{{1920, 0}, {100, 50}}),
              (Rect<Canvas>{{0, 0}, {200, 100}}));
}

} // namespace
} // namespace lumacap::tests
