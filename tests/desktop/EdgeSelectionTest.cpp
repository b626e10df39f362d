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

struct EdgeSelectionTest : SelectionFixture, testing::WithParamInterface<EdgeDrag> {
    void expectEdgePixels()
    {
        screen->placePointer({GetParam().from.x() < 800 ? 400 : 1100, 300});
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
    start();
    expectEdgePixels();
}

TEST_P(EdgeSelectionTest, aDragHoldsTheOutermostPixelsAtScaleTwo)
{
    startDesktop();
    desktop->set("QT_SCALE_FACTOR", "2");
    startAgent();
    expectEdgePixels();
}

INSTANTIATE_TEST_SUITE_P(
    , EdgeSelectionTest,
    testing::Values(EdgeDrag{"upperLeft", {100, 100}, {0, 0}, {0, 0, 100, 100}},
                    EdgeDrag{"lowerLeft", {100, 500}, {0, 599}, {0, 500, 100, 100}},
                    EdgeDrag{"upperRight", {1300, 100}, {1439, 0}, {1300, 0, 140, 100}},
                    EdgeDrag{"lowerRight", {1300, 500}, {1439, 599}, {1300, 500, 140, 100}},
                    EdgeDrag{"fromLowerRight", {1439, 599}, {1300, 500}, {1300, 500, 140, 100}}),
    [](const auto &instance) { return instance.param.name; });

} // namespace
} // namespace lumacap::harness
