#include "CoveredScreen.h"
#include "harness/PaintedScreen.h"
#include "harness/PlainWindow.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <gtest/gtest.h>

#include <csignal>

#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct OverlaySurfaceTest : CoveredScreenTest { };

TEST_F(OverlaySurfaceTest, coversExactlyItsMonitorAndLeavesTheOtherUntouched)
{
    start(sideBySide());
    const QImage below = noisePicture({1440, 700}, 5);
    const PaintedScreen painted(display, below);
    coverRight();
    QImage expected = below;
    const QImage picture = noisePicture(rightMonitor.size());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            expected.setPixel(rightMonitor.topLeft() + QPoint(x, y), picture.pixel(x, y));
    }
    EXPECT_EQ(differingPixels(expected, shownOn(display)), 0);
    EXPECT_TRUE(isCovered(display));
}

TEST_F(OverlaySurfaceTest, leavesWhatWasOnTheScreenThereUntilItIsPainted)
{
    start(sideBySide());
    const QImage below = noisePicture({1440, 700}, 5);
    const PaintedScreen painted(display, below);
    const Process &process = run(u"stop"_s, 1);
    ASSERT_TRUE(waitFor([this] { return isCovered(display); }));
    ASSERT_TRUE(says(process, "covered"));
    EXPECT_EQ(differingPixels(below, shownOn(display)), 0);
    process.send(SIGCONT);
    requireShown(rightMonitor);
}

TEST_F(OverlaySurfaceTest, isAboveDocksAndFullScreenWindows)
{
    for (const auto windowManager : {WindowManager::Openbox, WindowManager::Xfwm4}) {
        start(sideBySide(windowManager));
        const PlainWindow dock(display, {0, 0, 640, 30});
        dock.setAtoms("_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_DOCK"});
        dock.show();
        const PlainWindow fullScreen(display, {100, 100, 200, 100});
        fullScreen.setAtoms("_NET_WM_STATE", {"_NET_WM_STATE_FULLSCREEN"});
        fullScreen.show();
        ASSERT_TRUE(waitFor([&fullScreen] { return fullScreen.outermostFrame() == leftMonitor; }));
        run(u"cover"_s, 0);
        requireShown(leftMonitor);
    }
}

TEST_F(OverlaySurfaceTest, givesItsChildrenTheirEvents)
{
    start(sideBySide());
    const Process &process = coverRight();
    click({655, 120});
    EXPECT_TRUE(says(process, "press in child 5 10"));
}

TEST_F(OverlaySurfaceTest, leavesNothingBehindHoweverOften)
{
    start(sideBySide());
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const XConnection connection(display);
    const auto windows = [&connection] {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            connection.raw(), xcb_query_tree(connection.raw(), connection.root()), nullptr));
        return tree->children_len;
    };
    const Process &once = run(u"cycle"_s, 1, {u"1"_s});
    ASSERT_TRUE(says(once, "done"));
    const auto withOne = windows(); // with those that the toolkit keeps for itself
    desktop->stop(once);
    ASSERT_TRUE(waitFor([&] { return windows() < withOne; }));
    const Process &often = run(u"cycle"_s, 1, {u"20"_s});
    ASSERT_TRUE(says(often, "done"));
    EXPECT_EQ(windows(), withOne);
    EXPECT_FALSE(isCovered(display));
    EXPECT_TRUE(isInputFree(display));
    EXPECT_TRUE(earlier.hasFocus());
    EXPECT_EQ(often.errors(), QByteArray());
}

TEST_F(OverlaySurfaceTest, aDesktopWithoutSurfacesHidesTheWidgetAndEndsTheCapture)
{
    start(sideBySide());
    desktop->set("LUMACAP_OVERLAY_SURFACE", "none");
    const Process &process = run(u"cover"_s, 1);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_EQ(process.output(), "covered\nchanged while hidden\nuncovered\n");
}

} // namespace
} // namespace lumacap::harness
