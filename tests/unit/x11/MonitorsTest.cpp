#include "platform/x11/Monitors.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

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

TEST(GlobalPoint, isTheMiddleOfThePixel)
{
    EXPECT_EQ(globalPoint({0, 0}, {0, 0, 1920, 1080}, 1), (Point<Global>{0.5, 1079.5}));
    EXPECT_EQ(globalPoint({1919, 1079}, {0, 0, 1920, 1080}, 1), (Point<Global>{1919.5, 0.5}));
    EXPECT_EQ(globalPoint({3839, 2159}, {0, 0, 3840, 2160}, 2), (Point<Global>{1919.75, 0.25}));
}

/// Monitors of which the first is the main one.
struct Layout {
    const char *name;
    std::vector<QRect> monitors;
};

std::ostream &operator<<(std::ostream &stream, const Layout &layout)
{
    return stream << layout.name;
}

class GlobalPointOnMonitors : public testing::TestWithParam<Layout> { };

TEST_P(GlobalPointOnMonitors, liesInTheFrameOfTheMonitorThatShowsThePixelAndInNoOther)
{
    const std::vector<QRect> &monitors = GetParam().monitors;
    for (const double factor : {1.0, 2.0, 3.0}) {
        for (const QRect &shown : monitors) {
            for (const QPoint pixel : {shown.topLeft(), shown.topRight(), shown.bottomLeft(),
                                       shown.bottomRight(), shown.center()}) {
                const auto point = globalPoint(pixel, monitors.front(), factor);
                for (const QRect &monitor : monitors)
                    EXPECT_EQ(globalFrame(monitor, monitors.front(), factor).contains(point),
                              monitor == shown);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, GlobalPointOnMonitors,
    testing::Values(Layout{"mainOnTheLeft", {{0, 0, 1920, 1080}, {1920, 300, 1366, 768}}},
                    Layout{"mainOnTheRight", {{1366, 0, 1920, 1080}, {0, 312, 1366, 768}}},
                    Layout{"mainBelow", {{200, 768, 1920, 1080}, {0, 0, 1366, 768}}},
                    Layout{"mainAbove", {{0, 0, 1920, 1081}, {33, 1081, 1367, 769}}}),
    [](const auto &instance) { return instance.param.name; });

} // namespace lumacap::x11
