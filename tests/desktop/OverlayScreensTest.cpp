#include "CoveredScreen.h"
#include "harness/PaintedScreen.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct OverlayScreensTest : CoveredScreenTest { };

/// How a desktop is told to scale, and the monitor covered.
struct Scaling {
    const char *name;
    QByteArray variable;
    QByteArray value;
    /// Where the 140th pixel of the 210th row is, in points.
    QByteArray place;
    QRect monitor = rightMonitor;
};

std::ostream &operator<<(std::ostream &stream, const Scaling &scaling)
{
    return stream << scaling.name;
}

struct ScaledOverlayTest : OverlayScreensTest, testing::WithParamInterface<Scaling> { };

TEST_P(ScaledOverlayTest, coversEveryPixelOnceAndTellsPlacesInPoints)
{
    const QRect monitor = GetParam().monitor;
    start(
        {.server = {.size = {1440, 740},
                    .monitors = {{u"LEFT"_s, leftMonitor, Role::Primary}, {u"RIGHT"_s, monitor}}}});
    if (GetParam().variable.isEmpty()) {
        const QString merge = u"echo Xft.dpi: 192 | xrdb -nocpp -merge"_s;
        ASSERT_EQ(desktop->ask({u"sh"_s, u"-c"_s, merge}).ending, Ending{});
    } else {
        desktop->set(GetParam().variable, GetParam().value);
    }
    const QImage below = noisePicture({1440, 740}, 5);
    const PaintedScreen painted(display, below);
    const Process &process = run(u"cover"_s, 1);
    requireShown(monitor);
    const QRect beside(monitor.right() + 1, 0, 1440 - monitor.right() - 1, 740);
    const QRect beneath(0, monitor.bottom() + 1, 1440, 740 - monitor.bottom() - 1);
    for (const QRect &area : {leftMonitor, beside, beneath}) {
        if (!area.isEmpty()) {
            EXPECT_EQ(differingPixels(below.copy(area), shownOn(display, area)), 0);
        }
    }
    click(monitor.topLeft() + QPoint(140, 210));
    EXPECT_TRUE(says(process, "press " + GetParam().place)) << process.output().toStdString();
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

INSTANTIATE_TEST_SUITE_P(
    Scales, ScaledOverlayTest,
    testing::Values(
        Scaling{"byTheDesktopsResolution", {}, {}, "70 105"},
        Scaling{"byTheEnvironment", "QT_SCALE_FACTOR", "2", "70 105"},
        Scaling{"onThisMonitorAlone", "QT_SCREEN_SCALE_FACTORS", "LEFT=1;RIGHT=2", "70 105"},
        Scaling{"onTheOtherAlone", "QT_SCREEN_SCALE_FACTORS", "LEFT=2;RIGHT=1", "140 210"},
        Scaling{"byOneAndAHalf", "QT_SCALE_FACTOR", "1.5", "93.3333 140", {640, 100, 797, 599}},
        Scaling{"byOneAndThreeQuarters", "QT_SCALE_FACTOR", "1.75", "80 120", {640, 100, 790, 601}},
        Scaling{"byThree", "QT_SCALE_FACTOR", "3", "46.6667 70", {640, 100, 790, 601}}),
    [](const auto &instance) { return instance.param.name; });

TEST_F(OverlayScreensTest, tellsOnceThatItsMonitorWasUnplugged)
{
    start(outputs());
    const Process &process = coverRight();
    desktop->server().switchOff(u"DUMMY2"_s); // another one, which is none of its business
    press(u"a"_s);
    ASSERT_TRUE(says(process, "key A"));
    ASSERT_FALSE(process.output().contains("changed"));
    desktop->server().switchOff(u"DUMMY1"_s);
    EXPECT_TRUE(says(process, "changed"));
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(isInputFree(display));
    EXPECT_EQ(process.output().count("changed"), 1);
}

TEST_F(OverlayScreensTest, tellsThatItsMonitorWasMoved)
{
    start(outputs());
    const Process &process = coverRight();
    desktop->server().randr({u"--output"_s, u"DUMMY1"_s, u"--pos"_s, u"640x0"_s});
    EXPECT_TRUE(says(process, "changed"));
}

TEST_F(OverlayScreensTest, tellsThatItsMonitorWasResized)
{
    start(outputs());
    const Process &process = coverRight();
    desktop->server().randr({u"--addmode"_s, u"DUMMY1"_s, u"modeDUMMY0"_s});
    desktop->server().randr({u"--output"_s, u"DUMMY1"_s, u"--mode"_s, u"modeDUMMY0"_s});
    EXPECT_TRUE(says(process, "changed"));
}

TEST_F(OverlayScreensTest, tellsOfTheEndOfAVirtualServersOnlyMonitor)
{
    start({.server = {.size = {800, 600}}});
    const Process &process = run(u"cover"_s, 0);
    requireShown({0, 0, 800, 600});
    desktop->server().switchOff(u"screen"_s);
    EXPECT_TRUE(says(process, "changed"));
}

/// A layout, the pixel that the pointer points at, and its middle in global points.
struct PointerPlace {
    const char *name;
    std::vector<Monitor> monitors;
    QPoint pixel;
    QByteArray point;
};

std::ostream &operator<<(std::ostream &stream, const PointerPlace &place)
{
    return stream << place.name;
}

struct PointerPositionTest : OverlayScreensTest, testing::WithParamInterface<PointerPlace> { };

TEST_P(PointerPositionTest, isTheMiddleOfThePixelCountedFromTheMainMonitor)
{
    start({.server = {.size = {1440, 1100}, .monitors = GetParam().monitors}});
    const QPoint pixel = GetParam().pixel;
    xdotool({u"mousemove"_s, QString::number(pixel.x()), QString::number(pixel.y())});
    EXPECT_EQ(desktop->ask(overlayProbe({u"pointer"_s})).output, GetParam().point + '\n');
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, PointerPositionTest,
    testing::Values(
        PointerPlace{"topRightCornerOfTheMainMonitor",
                     {{u"A"_s, {0, 0, 640, 480}, Role::Primary}, {u"B"_s, {640, 0, 800, 600}}},
                     {639, 0},
                     "639.5 479.5"},
        PointerPlace{"belowTheMainMonitorsLowerEdge",
                     {{u"A"_s, {0, 0, 640, 480}, Role::Primary}, {u"B"_s, {640, 0, 800, 600}}},
                     {1000, 599},
                     "1000.5 -119.5"},
        PointerPlace{"leftOfTheMainMonitor",
                     {{u"A"_s, {0, 0, 640, 480}}, {u"B"_s, {640, 0, 800, 600}, Role::Primary}},
                     {0, 0},
                     "-639.5 599.5"},
        PointerPlace{"aboveTheMainMonitor",
                     {{u"A"_s, {0, 0, 640, 480}}, {u"B"_s, {0, 480, 800, 600}, Role::Primary}},
                     {10, 20},
                     "10.5 1059.5"}),
    [](const auto &instance) { return instance.param.name; });

} // namespace
} // namespace lumacap::harness
