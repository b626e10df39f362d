#include "platform/x11/Monitors.h"

#include <gtest/gtest.h>

namespace lumacap::x11 {

TEST(GlobalFrame, putsTheOriginAtTheMainMonitorsLowerLeft)
{
    const QRect main(0, 0, 1920, 1080);

    EXPECT_EQ(globalFrame(main, main, 1), (Rect<Global>{{0, 0}, {1920, 1080}}));
}

TEST(GlobalFrame, countsUpwardsAndFromTheMainMonitorWhereverItStands)
{
    const QRect main(1280, 200, 1920, 1080);
    const QRect left(0, 0, 1280, 1024);
    const QRect below(1280, 1280, 1920, 1200);

    EXPECT_EQ(globalFrame(left, main, 1), (Rect<Global>{{-1280, 256}, {1280, 1024}}));
    EXPECT_EQ(globalFrame(below, main, 1), (Rect<Global>{{0, -1200}, {1920, 1200}}));
}

TEST(GlobalFrame, hasTheMainMonitorsPointAsItsUnit)
{
    const QRect main(0, 0, 3840, 2160);
    const QRect right(3840, 0, 1920, 1080);

    EXPECT_EQ(globalFrame(main, main, 2), (Rect<Global>{{0, 0}, {1920, 1080}}));
    EXPECT_EQ(globalFrame(right, main, 2), (Rect<Global>{{1920, 540}, {960, 540}}));
}

} // namespace lumacap::x11
