#include "SelectionFixture.h"

#include <ostream>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// A drag to the outer edges of two screens side by side, and what it is to hold.
struct EdgeDrag {
    const char *name;
    QPoint from;
    QPoint to;
    QRect area;
};

std::ostream &operator<<(std::ostream &stream, const EdgeDrag &drag)
{
    return stream << drag.name;
}

/// Large enough for the toolbar to leave the corners free at scale two.
DesktopOptions twoScreens()
{
    return {.server = {.size = {3200, 1200},
                       .monitors = {{u"LEFT"_s, {0, 0, 1600, 1200}, Role::Primary},
                                    {u"RIGHT"_s, {1600, 0, 1600, 1200}}}}};
}

struct EdgeSelectionTest : SelectionFixture, testing::WithParamInterface<EdgeDrag> {
    void expectEdgePixels()
    {
        screen->placePointer({GetParam().from.x() < 1600 ? 400 : 2100, 600});
        openOverlay();
        const QImage expected = screen->expected(GetParam().area);

        drag(GetParam().from, GetParam().to);
        press(u"Return"_s);

        EXPECT_EQ(savedPicture().size(), expected.size());
        EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
    }
};

TEST_P(EdgeSelectionTest, aDragHoldsTheOutermostPixels)
{
    start(twoScreens());
    expectEdgePixels();
}

TEST_P(EdgeSelectionTest, aDragHoldsTheOutermostPixelsAtScaleTwo)
{
    startDesktop(twoScreens());
    desktop->set("QT_SCALE_FACTOR", "2");
    startAgent();
    expectEdgePixels();
}

INSTANTIATE_TEST_SUITE_P(
    , EdgeSelectionTest,
    testing::Values(EdgeDrag{"upperLeft", {100, 100}, {0, 0}, {0, 0, 100, 100}},
                    EdgeDrag{"lowerLeft", {100, 1100}, {0, 1199}, {0, 1100, 100, 100}},
                    EdgeDrag{"upperRight", {3060, 100}, {3199, 0}, {3060, 0, 140, 100}},
                    EdgeDrag{"lowerRight", {3060, 1100}, {3199, 1199}, {3060, 1100, 140, 100}},
                    EdgeDrag{"fromLowerRight", {3199, 1199}, {3060, 1100}, {3060, 1100, 140, 100}}),
    [](const auto &instance) { return instance.param.name; });

} // namespace
} // namespace lumacap::harness
