#include "SwayAgentFixture.h"
#include "harness/WaitFor.h"

#include <cmath>
#include <ostream>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// The native pixels of `output` that a drag between two places selects: from the nearest ones on,
/// as many as are full.
QRect draggedPixels(const TestOutput &output, QPoint from, QPoint to)
{
    const double across = static_cast<double>(output.pixels.width()) / output.frame.width();
    const double down = static_cast<double>(output.pixels.height()) / output.frame.height();
    const auto whole = [](double pixels) { return static_cast<int>(std::floor(pixels)); };
    return {whole(from.x() * across + 0.5), whole(from.y() * down + 0.5),
            whole((to.x() - from.x()) * across), whole((to.y() - from.y()) * down)};
}

struct Layout {
    const char *name;
    /// The first of them is selected on.
    std::vector<SwayOutput> outputs;
};

void PrintTo(const Layout &layout, std::ostream *stream)
{
    *stream << layout.name;
}

struct SelectionScalesTest : SwayAgentFixture, testing::WithParamInterface<Layout> {
    void openOverlayOnTheFirst()
    {
        startDesktop({.outputs = GetParam().outputs});
        output = desktop->outputs().front();
        startAgent();
        openOverlay();
    }

    TestOutput output;
};

TEST_P(SelectionScalesTest, aDragSavesExactlyTheNativePixelsUnderIt)
{
    openOverlayOnTheFirst();
    const QPoint from(104, 176);
    const QPoint to(350, 398);

    desktop->input().drag(output.frame.topLeft() + from, output.frame.topLeft() + to);
    desktop->input().press({evdev::enter});

    const QRect expected = draggedPixels(output, from, to);
    const QImage saved = savedPicture();
    EXPECT_EQ(saved.size(), expected.size());
    EXPECT_EQ(differingPixels(painted[output.name].copy(expected), saved), 0);
    EXPECT_TRUE(waitFor([this] { return showsPlainly(); }));
}

TEST_P(SelectionScalesTest, aDragToTheCornerHoldsTheOutermostPixels)
{
    openOverlayOnTheFirst();
    const QPoint from(output.frame.width() / 2, output.frame.height() / 2);
    const QPoint last(output.frame.width() - 1, output.frame.height() - 1);

    desktop->input().drag(output.frame.topLeft() + from, output.frame.topLeft() + last);
    desktop->input().press({evdev::enter});

    const QImage &whole = painted[output.name];
    const QPoint first = draggedPixels(output, from, last).topLeft();
    const QImage saved = savedPicture();
    // Its first pixels are the nearest ones, and of its length only full ones count.
    EXPECT_NEAR(saved.width(), whole.width() - first.x(), 1);
    EXPECT_NEAR(saved.height(), whole.height() - first.y(), 1);
    EXPECT_EQ(differingPixels(whole.copy({first, saved.size()}), saved), 0);
}

INSTANTIATE_TEST_SUITE_P(
    On, SelectionScalesTest,
    testing::Values(
        Layout{"Scale1", {{}}}, Layout{"Scale1And25", {{{1250, 1000}, 1.25}}},
        Layout{"Scale1And50", {{{1500, 900}, 1.5}}}, Layout{"Scale2", {{{1600, 1000}, 2}}},
        Layout{"TurnedAtScale2", {{{1800, 1400}, 2, {}, u"90"_s}}},
        Layout{"Scale2BesideScale1", {{{1600, 1000}, 2, {1280, 0}}, {{1280, 800}, 1}}},
        Layout{"Scale1And50BesideScale2", {{{1500, 900}, 1.5, {800, 0}}, {{1600, 1000}, 2}}},
        Layout{"Scale1BelowScale1And25", {{{1280, 800}, 1, {0, 800}}, {{1250, 1000}, 1.25}}}),
    [](const auto &layout) { return layout.param.name; });

} // namespace
} // namespace lumacap::harness
