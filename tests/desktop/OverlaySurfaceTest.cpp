#include "harness/ClientWindow.h"
#include "harness/OpenMenu.h"
#include "harness/PaintedScreen.h"
#include "harness/PopUps.h"
#include "harness/PrivateDesktop.h"
#include "harness/Rest.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QRect leftMonitor{0, 0, 640, 480};
const QRect rightMonitor{640, 100, 800, 600};

DesktopOptions sideBySide(WindowManager windowManager = WindowManager::Openbox)
{
    return {.server = {.size = {1440, 700},
                       .monitors = {{u"LEFT"_s, leftMonitor, Role::Primary},
                                    {u"RIGHT"_s, rightMonitor}}},
            .windowManager = windowManager};
}

QStringList probe(const QStringList &words)
{
    return QStringList{QStringLiteral(LUMACAP_OVERLAY_PROBE)} + words;
}

struct OverlaySurfaceTest : testing::Test {
    void start(const DesktopOptions &options)
    {
        desktop = std::make_unique<PrivateDesktop>(options);
        display = desktop->server().display();
    }
    /// Starts the probe, which covers the screen `index`, the main one being 0.
    Process &run(const QString &mode, int index, const QStringList &more = {})
    {
        return desktop->start(u"probe"_s, probe(QStringList{mode, QString::number(index)} + more));
    }
    /// Covers the right one of the two monitors side by side, and waits until it is.
    Process &coverRight(const QString &mode = u"cover"_s)
    {
        Process &process = run(mode, 1);
        requireShown(rightMonitor);
        return process;
    }
    void requireShown(const QRect &monitor) const
    {
        const QImage picture = noisePicture(monitor.size());
        require("the covered screen",
                [&] { return differingPixels(picture, shownOn(display, monitor)) == 0; });
    }
    void xdotool(const QStringList &words) const
    {
        ASSERT_EQ(desktop->ask(QStringList{u"xdotool"_s} + words).ending, Ending{});
    }
    void press(const QString &key) const { xdotool({u"key"_s, key}); }
    void click(QPoint place) const
    {
        xdotool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
                 u"1"_s});
    }

    std::unique_ptr<PrivateDesktop> desktop;
    QByteArray display;
};

bool says(const Process &process, const QByteArray &line)
{
    return waitFor([&] { return process.output().contains(line + '\n'); });
}

/// Whether another program gets pointer and keyboard, which it gives back at once.
bool isInputFree(const QByteArray &display)
{
    const XConnection connection(display);
    auto *const raw = connection.raw();
    const XReply<xcb_grab_pointer_reply_t> pointer(xcb_grab_pointer_reply(
        raw,
        xcb_grab_pointer(raw, 0, connection.root(), XCB_EVENT_MASK_BUTTON_PRESS,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, 0, 0, XCB_CURRENT_TIME),
        nullptr));
    const XReply<xcb_grab_keyboard_reply_t> keyboard(
        xcb_grab_keyboard_reply(raw,
                                xcb_grab_keyboard(raw, 0, connection.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return pointer && pointer->status == XCB_GRAB_STATUS_SUCCESS && keyboard
        && keyboard->status == XCB_GRAB_STATUS_SUCCESS;
}

/// Whether a window that no window manager looks after lies exactly over the right monitor.
bool isCovered(const QByteArray &display)
{
    return std::ranges::count(popUps(XConnection(display)), rightMonitor) > 0;
}

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
        const ClientWindow dock(display, {0, 0, 640, 30}, WindowKind::Dock);
        const ClientWindow fullScreen(display, {100, 100, 200, 100}, WindowKind::FullScreen);
        ASSERT_TRUE(waitFor([this] {
            return shownOn(display, {600, 450, 1, 1}).pixel(0, 0) == 0xff306090; // it has grown
        }));
        run(u"cover"_s, 0);
        requireShown(leftMonitor);
    }
}

TEST_F(OverlaySurfaceTest, hasTheKeyboardAtOnce)
{
    start(sideBySide());
    const ClientWindow other(display, {100, 100, 100, 100});
    other.takeFocus();
    const Process &process = coverRight();
    press(u"Return"_s);
    EXPECT_TRUE(says(process, "key Return"));
    EXPECT_TRUE(says(process, "active"));
    press(u"KP_Enter"_s);
    EXPECT_TRUE(says(process, "key Enter"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

TEST_F(OverlaySurfaceTest, keepsTheKeyboardWhenAnotherWindowTakesTheFocus)
{
    start(sideBySide());
    const Process &process = coverRight();
    const ClientWindow other(display, {100, 100, 100, 100});
    other.takeFocus();
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(other.hasFocus()); // it was not there before; whoever has it now keeps it
}

TEST_F(OverlaySurfaceTest, hasThePointerOnEveryMonitor)
{
    start(sideBySide());
    const Process &process = coverRight();
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    EXPECT_TRUE(says(process, "release 100 200"));
    click({40, 50});
    EXPECT_TRUE(says(process, "press -600 -50"));
}

TEST_F(OverlaySurfaceTest, givesItsChildrenTheirEvents)
{
    start(sideBySide());
    const Process &process = coverRight();
    click({655, 120});
    EXPECT_TRUE(says(process, "press in child 5 10"));
}

struct FocusTest : OverlaySurfaceTest, testing::WithParamInterface<WindowManager> { };

TEST_P(FocusTest, goesBackToTheWindowThatHadIt)
{
    start(sideBySide(GetParam()));
    const ClientWindow earlier(display, {100, 100, 100, 100});
    const ClientWindow later(display, {300, 100, 100, 100});
    later.takeFocus();
    earlier.takeFocus();
    const Process &process = coverRight();
    ASSERT_FALSE(earlier.hasFocus());
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(isInputFree(display));
}

TEST_P(FocusTest, goesBackWhenTheWidgetIsDestroyed)
{
    start(sideBySide(GetParam()));
    const ClientWindow earlier(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight(u"destroy"_s);
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "destroyed"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(isInputFree(display));
}

TEST_P(FocusTest, goesToTheNextWidgetAfterOneThatWasDestroyed)
{
    start(sideBySide(GetParam()));
    const ClientWindow earlier(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight(u"replace"_s);
    press(u"Escape"_s);
    ASSERT_TRUE(waitFor([&] { return process.output().count("covered\n") == 2; }));
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(isInputFree(display));
}

TEST_P(FocusTest, isNotGivenToAWindowThatHasGone)
{
    start(sideBySide(GetParam()));
    const ClientWindow earlier(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight();
    earlier.hide();
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(isInputFree(display));
    EXPECT_EQ(process.errors(), QByteArray());
}

std::string nameOf(WindowManager windowManager)
{
    constexpr std::array names{"nobody", "openbox", "xfwm4"};
    return names.at(static_cast<std::size_t>(windowManager));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, FocusTest,
                         testing::Values(WindowManager::Nobody, WindowManager::Openbox,
                                         WindowManager::Xfwm4),
                         [](const auto &instance) { return nameOf(instance.param); });

const QRect menuArea{700, 200, 150, 200};

TEST_F(OverlaySurfaceTest, coversAnOpenMenuAndTakesOverWhenThatCloses)
{
    start(sideBySide());
    OpenMenu menu(display, menuArea);
    const Process &process = coverRight();
    press(u"a"_s);
    ASSERT_TRUE(waitFor([&] { return menu.isOpen() && menu.keys() == 1; })); // it holds the input
    click({1000, 500});
    ASSERT_TRUE(waitFor([&] { return !menu.isOpen(); }));
    ASSERT_TRUE(waitFor([this] { return !isInputFree(display); })); // ours now
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(isInputFree(display));
    EXPECT_FALSE(process.output().contains("press 360 400")); // the menu's
}

/// Waits until the probe must have given up on the keyboard.
void outlastTheKeyboardLimit()
{
    const auto start = std::chrono::steady_clock::now();
    require("two seconds and more",
            [start] { return std::chrono::steady_clock::now() - start > 3s; });
}

TEST_F(OverlaySurfaceTest, aMenuThatStaysOpenForLongGivesPointerAndKeyboardToTheOverlay)
{
    start(sideBySide());
    OpenMenu menu(display, menuArea);
    const Process &process = coverRight();
    outlastTheKeyboardLimit();
    click({1000, 500});
    ASSERT_TRUE(waitFor([&] { return !menu.isOpen(); }));
    ASSERT_TRUE(waitFor([this] { return !isInputFree(display); }));
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    EXPECT_TRUE(says(process, "uncovered"));
}

TEST_F(OverlaySurfaceTest, isServedByThePointerAloneWhereTheKeyboardIsHeld)
{
    start(sideBySide());
    const XConnection holder(display);
    const XReply<xcb_grab_keyboard_reply_t> keyboard(
        xcb_grab_keyboard_reply(holder.raw(),
                                xcb_grab_keyboard(holder.raw(), 0, holder.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    ASSERT_EQ(keyboard->status, XCB_GRAB_STATUS_SUCCESS);
    const Process &process = coverRight();
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    outlastTheKeyboardLimit();
    const auto before = wakeUps(process.pid());
    outlastTheKeyboardLimit();
    EXPECT_LT(wakeUps(process.pid()) - before, 20); // it no longer asks, fifty times a second
}

TEST_F(OverlaySurfaceTest, rests)
{
    start(sideBySide());
    const Process &process = coverRight();
    press(u"a"_s);
    ASSERT_TRUE(says(process, "key A"));
    const auto before = wakeUps(process.pid());
    outlastTheKeyboardLimit();
    EXPECT_LT(wakeUps(process.pid()) - before, 20);
}

TEST_F(OverlaySurfaceTest, leavesNothingBehindHoweverOften)
{
    start(sideBySide());
    const ClientWindow earlier(display, {100, 100, 100, 100});
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

struct ScaledOverlayTest : OverlaySurfaceTest, testing::WithParamInterface<Scaling> { };

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

/// A desktop with real outputs, the first of them the main one.
DesktopOptions outputs()
{
    return {.server = {.kind = ServerKind::RealOutputs,
                       .monitors = {{u"DUMMY0"_s, leftMonitor, Role::Primary},
                                    {u"DUMMY1"_s, rightMonitor},
                                    {u"DUMMY2"_s, {0, 700, 640, 480}}}}};
}

TEST_F(OverlaySurfaceTest, tellsOnceThatItsMonitorWasUnplugged)
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

TEST_F(OverlaySurfaceTest, isUncoveredThoughAnotherProgramNeverLetsGoOfTheInput)
{
    start(outputs());
    const ClientWindow earlier(display, {100, 100, 100, 100});
    earlier.takeFocus();
    OpenMenu menu(display, menuArea);
    const Process &process = coverRight();
    outlastTheKeyboardLimit();
    desktop->server().switchOff(u"DUMMY1"_s);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(menu.isOpen());
}

TEST_F(OverlaySurfaceTest, tellsThatItsMonitorWasMoved)
{
    start(outputs());
    const Process &process = coverRight();
    desktop->server().randr({u"--output"_s, u"DUMMY1"_s, u"--pos"_s, u"640x0"_s});
    EXPECT_TRUE(says(process, "changed"));
}

TEST_F(OverlaySurfaceTest, tellsThatItsMonitorWasResized)
{
    start(outputs());
    const Process &process = coverRight();
    desktop->server().randr({u"--addmode"_s, u"DUMMY1"_s, u"modeDUMMY0"_s});
    desktop->server().randr({u"--output"_s, u"DUMMY1"_s, u"--mode"_s, u"modeDUMMY0"_s});
    EXPECT_TRUE(says(process, "changed"));
}

TEST_F(OverlaySurfaceTest, tellsOfTheEndOfAVirtualServersOnlyMonitor)
{
    start({.server = {.size = {800, 600}}});
    const Process &process = run(u"cover"_s, 0);
    requireShown({0, 0, 800, 600});
    desktop->server().switchOff(u"screen"_s);
    EXPECT_TRUE(says(process, "changed"));
}

TEST_F(OverlaySurfaceTest, aDesktopWithoutSurfacesHidesTheWidgetAndEndsTheCapture)
{
    start(sideBySide());
    desktop->set("LUMACAP_OVERLAY_SURFACE", "none");
    const Process &process = run(u"cover"_s, 1);
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_EQ(process.output(), "covered\nchanged while hidden\nuncovered\n");
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

struct PointerPositionTest : OverlaySurfaceTest, testing::WithParamInterface<PointerPlace> { };

TEST_P(PointerPositionTest, isTheMiddleOfThePixelCountedFromTheMainMonitor)
{
    start({.server = {.size = {1440, 1100}, .monitors = GetParam().monitors}});
    const QPoint pixel = GetParam().pixel;
    xdotool({u"mousemove"_s, QString::number(pixel.x()), QString::number(pixel.y())});
    EXPECT_EQ(desktop->ask(probe({u"pointer"_s})).output, GetParam().point + '\n');
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
