#include "overlay/OverlayLabel.h"

#include "graphics/Text.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

TEST(OverlayLabel, ofADragIsItsSizeInWholePoints)
{
    EXPECT_EQ(dimensionText({100.9, 50.2}), u"100 × 50"_s);
    EXPECT_EQ(dimensionText({640.7, 480.2}), u"640 × 480"_s);
    EXPECT_EQ(dimensionText({0, 0.99}), u"0 × 0"_s);
}

TEST(OverlayLabelDeathTest, ofASizeThatIsNoNumberEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(dimensionText({std::nan(""), 50}), "");
    EXPECT_DEATH(dimensionText({50, 1e300}), "");
}

TEST(OverlayLabel, standsEightPointsUnderItsRectangleInTheMiddle)
{
    const Text text(u" Editor "_s, 12, FontWeight::Medium);
    const auto [width, height] = text.size();

    const auto background = OverlayLabel(u"Editor"_s, {{100, 200}, {300, 50}}).background();

    EXPECT_EQ(
        background,
        (Rect<Canvas>{{250 - width * 0.5 - 6, 200 - height - 8 - 3}, {width + 12, height + 6}}));
}

TEST(OverlayLabel, movedStandsAsOneMadeThere)
{
    const Rect<Canvas> there{{20, 90}, {30, 40}};
    const OverlayLabel moved = OverlayLabel(u"Editor"_s, {{100, 200}, {300, 50}}).movedTo(there);

    EXPECT_EQ(moved, OverlayLabel(u"Editor"_s, there));
    EXPECT_EQ(moved.background(), OverlayLabel(u"Editor"_s, there).background());
}

TEST(OverlayLabel, withoutTextOrPlaceIsNone)
{
    EXPECT_EQ(OverlayLabel(QString(), {{100, 200}, {300, 50}}).background(), std::nullopt);
    EXPECT_EQ(OverlayLabel(u"Editor"_s, {{std::nan(""), 200}, {300, 50}}).background(),
              std::nullopt);
    EXPECT_EQ(OverlayLabel(u"Editor"_s, {{100, 200}, {HUGE_VAL, 50}}).background(), std::nullopt);
}

} // namespace
} // namespace lumacap::tests
