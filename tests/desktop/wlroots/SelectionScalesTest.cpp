#include "SwayAgentFixture.h"
#include "harness/WaitFor.h"

#include <cmath>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// The native pixels of `output` that a drag between two places holds at least a part of. The
/// pointer is in the middle of a unit.
QRect draggedPixels(const TestOutput &output, QPoint from, QPoint to)
{
    const double scale = static_cast<double>(output.pixels.width()) / output.frame.width();
    const auto first = [scale](int unit) {
        return static_cast<int>(std::floor((unit + 0.5) * scale));
    };
    const auto end = [scale](int unit) {
        return static_cast<int>(std::ceil((unit + 0.5) * scale));
    };
    const QPoint topLeft(first(from.x()), first(from.y()));
    return {topLeft, QSize(end(to.x()) - topLeft.x(), end(to.y()) - topLeft.y())};
}

struct Layout {
    const char *name;
    std::vector<SwayOutput> outputs;
    /// Of the output that is selected on, counted from 1.
    int number;
};

struct SelectionScalesTest : SwayAgentFixture, testing::WithParamInterface<Layout> { };

TEST_P(SelectionScalesTest, aDragSavesExactlyTheNativePixelsUnderIt)
{
    startDesktop({.outputs = GetParam().outputs});
    const QString name = u"HEADLESS-%1"_s.arg(GetParam().number);
    const TestOutput output =
        desktop->outputs().at(static_cast<std::size_t>(GetParam().number - 1));
    startAgent();
    desktop->command(u"focus output %1"_s.arg(name));
    desktop->input().moveTo(output.frame.topLeft() + QPoint(2, 2));
    openOverlay(name);
    const QPoint from(101, 75);
    const QPoint to(350, 297);

    desktop->input().drag(output.frame.topLeft() + from, output.frame.topLeft() + to);
    desktop->input().press({evdev::enter});

    const QRect expected = draggedPixels(output, from, to);
    const QImage saved = savedPicture();
    EXPECT_EQ(saved.size(), expected.size());
    EXPECT_EQ(differingPixels(painted[name].copy(expected), saved), 0);
    EXPECT_TRUE(waitFor([&] { return showsPlainly(name); }));
}

INSTANTIATE_TEST_SUITE_P(
    On, SelectionScalesTest,
    testing::Values(
        Layout{"Scale1", {{}}, 1}, Layout{"Scale1And25", {{{1250, 1000}, 1.25}}, 1},
        Layout{"Scale1And50", {{{1500, 900}, 1.5}}, 1}, Layout{"Scale2", {{{1600, 1000}, 2}}, 1},
        Layout{"TurnedAtScale2", {{{1600, 1000}, 2, {}, u"90"_s}}, 1},
        Layout{"Scale2BesideScale1", {{{1280, 800}, 1}, {{1600, 1000}, 2, {1280, 0}}}, 2},
        Layout{"Scale1And50BesideScale2", {{{1600, 1000}, 2}, {{1500, 900}, 1.5, {800, 0}}}, 2},
        Layout{"Scale1BelowScale1And25", {{{1250, 1000}, 1.25}, {{1280, 800}, 1, {0, 800}}}, 2}),
    [](const auto &layout) { return layout.param.name; });

} // namespace
} // namespace lumacap::harness
