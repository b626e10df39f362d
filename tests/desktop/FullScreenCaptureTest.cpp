#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

#include <memory>
#include <ostream>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

const QRect leftMonitor{0, 0, 3840, 2160};
const QRect rightMonitor{3840, 0, 1920, 2160};

/// A desktop showing noise, an agent on it, and what the agent's next capture has to be.
struct CaptureTest : testing::Test {
    void start(const DesktopOptions &options, const Cursor &cursor = opaqueCursor())
    {
        desktop = std::make_unique<PrivateDesktop>(options);
        const auto picture = noisePicture(options.server.size);
        screen = std::make_unique<PaintedScreen>(desktop->server().display(), picture, cursor);
    }

    QImage capture()
    {
        Agent agent(*desktop);
        agent.requireReady();
        EXPECT_TRUE(agent.activate(u"full-screen"_s));
        return clipboardPicture(*desktop);
    }

    std::unique_ptr<PrivateDesktop> desktop;
    std::unique_ptr<PaintedScreen> screen;
};

TEST_F(CaptureTest, theMenuEntryPutsTheFirstDisplayOnTheClipboard)
{
    start(twoMonitors());
    screen->placePointer({1234, 567});
    TrayHost tray(desktop->bus().address());
    const Agent agent(*desktop);
    tray.requireItem();
    ASSERT_TRUE(tray.click(fullScreenTitle()));
    EXPECT_EQ(differingPixels(screen->expected(leftMonitor), clipboardPicture(*desktop)), 0);
}

TEST_F(CaptureTest, theBusActionSavesTheSamePixelsInTheFileAndOnTheClipboard)
{
    start(twoMonitors());
    screen->placePointer({3000, 2000});
    writeSettings(
        *desktop,
        {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, desktop->folder(u"pictures"_s)}});
    Agent agent(*desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    const auto files = [this] { return capturesIn(desktop->folder(u"pictures"_s)); };
    ASSERT_TRUE(waitFor([&files] { return files().size() == 1; }));
    const QImage expected = screen->expected(leftMonitor);
    EXPECT_EQ(differingPixels(expected, pictureIn(*desktop, files().first())), 0);
    EXPECT_EQ(differingPixels(expected, clipboardPicture(*desktop)), 0);
}

TEST_F(CaptureTest, thePrimaryMonitorIsTakenThoughItIsTheSecond)
{
    start(twoMonitors(1));
    screen->placePointer({5000, 100});
    EXPECT_EQ(differingPixels(screen->expected(rightMonitor), capture()), 0);
}

TEST_F(CaptureTest, theFirstDisplayIsTakenThoughThePointerIsOnAnother)
{
    start(twoMonitors());
    screen->placePointer({5000, 1000});
    EXPECT_EQ(differingPixels(screen->expected(leftMonitor), capture()), 0);
}

/// Places where the pointer's picture is cut by an edge of the first display.
struct PointerPlace {
    const char *name;
    QPoint position;
};

std::ostream &operator<<(std::ostream &stream, const PointerPlace &place)
{
    return stream << place.name;
}

struct PointerTest : CaptureTest, testing::WithParamInterface<PointerPlace> { };

TEST_P(PointerTest, isCutAtTheEdgeOfTheDisplay)
{
    start({.server = {
               .size = {1000, 600},
               .monitors = {{u"LEFT"_s, {0, 0, 640, 600}}, {u"RIGHT"_s, {640, 0, 360, 600}}}}});
    screen->placePointer(GetParam().position);
    const QRect area(0, 0, 640, 600);
    EXPECT_EQ(differingPixels(screen->expected(area), capture()), 0);
}

INSTANTIATE_TEST_SUITE_P(Places, PointerTest,
                         testing::Values(PointerPlace{"topLeft", {0, 0}},
                                         PointerPlace{"left", {2, 300}},
                                         PointerPlace{"bottom", {300, 599}},
                                         PointerPlace{"betweenTheMonitors", {630, 300}},
                                         PointerPlace{"justOnTheOtherMonitor", {642, 300}},
                                         PointerPlace{"wholeOnTheOtherMonitor", {800, 300}}),
                         [](const auto &place) { return place.param.name; });

TEST_F(CaptureTest, aTranslucentPointerIsLaidOverTheScreen)
{
    start(smallScreen(), translucentCursor());
    screen->placePointer({320, 240});
    EXPECT_EQ(differingPixels(screen->expected(), capture(), 1), 0);
}

TEST_F(CaptureTest, worksWithoutRandr)
{
    auto options = smallScreen();
    options.server.arguments = {u"-extension"_s, u"RANDR"_s};
    start(options);
    EXPECT_EQ(differingPixels(screen->expected(), capture()), 0);
}

TEST_F(CaptureTest, worksWithoutSharedMemory)
{
    auto options = twoMonitors();
    options.server.arguments = {u"-extension"_s, u"MIT-SHM"_s};
    start(options);
    EXPECT_EQ(differingPixels(screen->expected(leftMonitor), capture()), 0);
}

TEST_F(CaptureTest, worksOnAScreenOfTenBitsAColour)
{
    auto options = smallScreen();
    options.server.depth = 30;
    start(options);
    EXPECT_EQ(differingPixels(screen->expected(), capture()), 0);
}

TEST_F(CaptureTest, worksWithoutAWindowManager)
{
    auto options = smallScreen();
    options.windowManager = WindowManager::Nobody;
    start(options);
    EXPECT_EQ(differingPixels(screen->expected(), capture()), 0);
}

TEST_F(CaptureTest, aScaleFactorOfTheToolkitLeavesNativePixels)
{
    start(smallScreen());
    desktop->set("QT_SCALE_FACTOR", "2");
    EXPECT_EQ(differingPixels(screen->expected(), capture()), 0);
}

TEST_F(CaptureTest, aScaleOfTheDesktopLeavesNativePixels)
{
    start({.server = {.size = {1281, 803}}}); // no multiple of the scale
    const auto done = desktop->ask({u"sh"_s, u"-c"_s, u"echo Xft.dpi: 192 | xrdb -nocpp -merge"_s});
    ASSERT_EQ(done.ending, Ending{});
    EXPECT_EQ(differingPixels(screen->expected(), capture()), 0);
}

DesktopOptions twoOutputs()
{
    return {.server = {.kind = ServerKind::RealOutputs,
                       .size = {2304, 1024},
                       .monitors = {{u"DUMMY0"_s, {0, 0, 1280, 1024}},
                                    {u"DUMMY1"_s, {1280, 0, 1024, 768}, Role::Primary}}}};
}

TEST_F(CaptureTest, thePrimaryOfTwoRealOutputsIsTaken)
{
    start(twoOutputs());
    screen->placePointer({1500, 300});
    EXPECT_EQ(differingPixels(screen->expected({1280, 0, 1024, 768}), capture()), 0);
}

TEST_F(CaptureTest, anOutputSwitchedOffLeavesTheOtherToBeTaken)
{
    start(twoOutputs());
    Agent agent(*desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_EQ(clipboardPicture(*desktop).size(), QSize(1024, 768));
    desktop->server().switchOff(u"DUMMY1"_s);
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_TRUE(waitFor([this] { return clipboardPicture(*desktop).size() == QSize(1280, 1024); }));
    EXPECT_EQ(differingPixels(screen->expected({0, 0, 1280, 1024}), clipboardPicture(*desktop)), 0);
}

TEST_F(CaptureTest, aRefusedRequestFailsAloneInOneLineAndTheAgentGoesOn)
{
    start(smallScreen());
    Agent agent(*desktop);
    agent.requireReady();
    // A monitor that reaches out of the screen: the server refuses the picture of it.
    desktop->server().randr(
        {u"--setmonitor"_s, u"*BEYOND"_s, u"640/200x480/150+100+0"_s, u"screen"_s});
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_TRUE(waitFor([&agent] { return !agent.process().output().isEmpty(); }));
    EXPECT_EQ(agent.process().output(),
              "Capture failed: the X server refused the request (BadMatch)\n");
    EXPECT_EQ(desktop->selectionOwner("CLIPBOARD"), 0U);

    desktop->server().randr({u"--delmonitor"_s, u"BEYOND"_s});
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(clipboardPicture(*desktop).size(), QSize(640, 480));
}

TEST_F(CaptureTest, withNoDisplayNothingIsCapturedAndTheAgentGoesOn)
{
    start(smallScreen());
    Agent agent(*desktop);
    agent.requireReady();
    desktop->server().switchOff(u"screen"_s);
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    desktop->server().randr({u"--output"_s, u"screen"_s, u"--auto"_s});
    screen->paint(noisePicture({640, 480}, 9));
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    // Requests are served in turn: had the first one stored anything, it would be seen before this
    // one.
    ASSERT_TRUE(waitFor([this] { return desktop->selectionOwner("CLIPBOARD") != 0; }));
    EXPECT_EQ(differingPixels(screen->expected(), clipboardPicture(*desktop)), 0);
    EXPECT_FALSE(agent.process().ending());
}

} // namespace
} // namespace lumacap::harness
