#include "CoveredScreen.h"
#include "harness/PlainWindow.h"
#include "harness/WaitFor.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// The keyboard's focus, with each window manager and with none.
struct OverlayFocusTest : CoveredScreenTest, testing::WithParamInterface<WindowManager> { };

TEST_P(OverlayFocusTest, goesBackToTheWindowThatHadIt)
{
    start(sideBySide(GetParam()));
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    const auto later = PlainWindow::shown(display, {300, 100, 100, 100});
    later.takeFocus();
    earlier.takeFocus();
    const Process &process = coverRight();
    ASSERT_FALSE(earlier.hasFocus());
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
}

TEST_P(OverlayFocusTest, goesBackWhenTheWidgetIsDestroyed)
{
    start(sideBySide(GetParam()));
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight(u"destroy"_s);
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "destroyed"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
}

TEST_P(OverlayFocusTest, goesToTheNextWidgetAfterOneThatWasDestroyed)
{
    start(sideBySide(GetParam()));
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight(u"replace"_s);
    press(u"Escape"_s);
    ASSERT_TRUE(waitFor([&] { return process.output().count("covered\n") == 2; }));
    click({740, 300});
    EXPECT_TRUE(says(process, "press 100 200"));
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return earlier.hasFocus() && !isCovered(display); }));
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
}

TEST_P(OverlayFocusTest, isTakenByAPressAndGoesBackToWhoeverHadItLast)
{
    start(sideBySide(GetParam()));
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight();
    const auto later = PlainWindow::shown(display, {300, 100, 100, 100});
    later.takeFocus();
    click({740, 300});
    ASSERT_TRUE(says(process, "press 100 200"));
    EXPECT_FALSE(later.hasFocus());
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([&] { return later.hasFocus(); }));
}

TEST_P(OverlayFocusTest, isNotGivenToAWindowThatHasGone)
{
    start(sideBySide(GetParam()));
    const auto earlier = PlainWindow::shown(display, {100, 100, 100, 100});
    earlier.takeFocus();
    const Process &process = coverRight();
    earlier.hide();
    press(u"Escape"_s);
    ASSERT_TRUE(says(process, "uncovered"));
    EXPECT_TRUE(waitFor([this] { return isInputFree(display); }));
    EXPECT_EQ(process.errors(), QByteArray());
}

TEST_P(OverlayFocusTest, isNotNeededForKeysWhenTheOtherMonitorIsClicked)
{
    start(sideBySide(GetParam()));
    auto other = PlainWindow::shown(display, {100, 100, 100, 100});
    other.listen();
    const Process &process = coverRight();
    click({150, 150});
    EXPECT_TRUE(waitFor([&] { return other.buttonPresses() == 1; }));
    EXPECT_TRUE(GetParam() == WindowManager::Nobody || waitFor([&] { return other.hasFocus(); }));
    press(u"a"_s);
    EXPECT_TRUE(says(process, "key A"));
    EXPECT_EQ(other.keyEvents(), 0);
    EXPECT_FALSE(process.output().contains("press"));
}

std::string nameOf(WindowManager windowManager)
{
    constexpr std::array names{"nobody", "openbox", "xfwm4"};
    return names.at(static_cast<std::size_t>(windowManager));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, OverlayFocusTest,
                         testing::Values(WindowManager::Nobody, WindowManager::Openbox,
                                         WindowManager::Xfwm4),
                         [](const auto &instance) { return nameOf(instance.param); });

struct RaisedWindowTest : OverlayFocusTest { };

TEST_P(RaisedWindowTest, staysBeneathTheOverlay)
{
    start(sideBySide(GetParam()));
    const auto onBoth = PlainWindow::shown(display, {500, 150, 300, 100});
    const auto other = PlainWindow::shown(display, {520, 120, 100, 100});
    coverRight();
    click({510, 230});
    EXPECT_TRUE(waitFor([&] { return onBoth.isFrontmost(); }));
    requireShown(rightMonitor);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, RaisedWindowTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4),
                         [](const auto &instance) { return nameOf(instance.param); });

} // namespace
} // namespace lumacap::harness
