#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"
#include "harness/wayland/SwayDesktop.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// How many pixels differ away from the pointer, which is at the picture's upper left.
qsizetype differingBelow(const QImage &expected, const QImage &seen)
{
    constexpr int pointerReach = 100;
    const QRect area(0, pointerReach, expected.width(), expected.height() - pointerReach);
    return expected.size() == seen.size() ? differingPixels(expected.copy(area), seen.copy(area))
                                          : expected.width() * expected.height();
}

TEST(SwayDesktop, showsAPicturePixelForPixelAtEveryScale)
{
    SwayDesktop desktop({.outputs = {{{1280, 800}, 1, {0, 0}},
                                     {{1500, 900}, 1.5, {1280, 0}},
                                     {{1600, 1000}, 2, {2280, 0}},
                                     {{1000, 750}, 1.25, {3080, 0}}}});
    for (const TestOutput &output : desktop.outputs()) {
        desktop.input().moveTo(output.frame.topLeft() + QPoint(2, 2));
        const QImage picture = noisePicture(output.pixels);
        desktop.paint(output.name, picture);
        EXPECT_EQ(differingBelow(picture, desktop.look(output.name)), 0)
            << output.name.toStdString();
    }
}

TEST(SwayDesktop, aWindowGetsKeysAndPressesOfItsPlace)
{
    SwayDesktop desktop;
    const Process &window = desktop.startWindow({});
    require("the keyboard", [&window] { return window.output().contains("focus\n"); });

    // Again until it comes: the compositor tells of the window before it has it in its place.
    EXPECT_TRUE(waitFor([&] {
        desktop.input().press({evdev::letterA});
        desktop.input().click({640, 400});
        const auto hasBoth = [&window] {
            return window.output().contains("key 30\n") && window.output().contains("button 272\n");
        };
        return waitFor(hasBoth, std::chrono::seconds(2));
    }));
}

TEST(SwayDesktop, readsTheClipboard)
{
    SwayDesktop desktop;
    EXPECT_THAT(desktop.clipboardTypes(), testing::IsEmpty());
    desktop.start(u"copy"_s,
                  {u"wl-copy"_s, u"--foreground"_s, u"--type"_s, u"text/plain"_s, u"words"_s});
    EXPECT_TRUE(waitFor([&desktop] { return desktop.clipboardTypes().contains("text/plain"); }));
    EXPECT_EQ(desktop.clipboardBytes("text/plain", std::chrono::seconds(5)), "words");
}

TEST(KWinDesktop, showsAPicturePixelForPixelOnEachOutput)
{
    KWinDesktop desktop({.size = {1000, 700}, .outputs = 2});
    ASSERT_EQ(desktop.outputs().size(), 2U);
    for (const TestOutput &output : desktop.outputs()) {
        desktop.input().moveTo(output.frame.topLeft() + QPoint(2, 2));
        const QImage picture = noisePicture(output.pixels);
        desktop.paint(output.name, picture);
        EXPECT_TRUE(waitFor([&] {
            return differingBelow(picture, desktop.look(output.name)) == 0;
        })) << output.name.toStdString();
    }
}

TEST(KWinDesktop, aWindowGetsKeysAndPressesOfItsPlace)
{
    KWinDesktop desktop;
    const Process &window = desktop.startWindow({.size = {1200, 700}});
    require("the keyboard", [&window] { return window.output().contains("focus\n"); });

    // Again until it comes: the compositor tells of the window before it has it in its place.
    EXPECT_TRUE(waitFor([&] {
        desktop.input().press({evdev::letterA});
        desktop.input().click({640, 400});
        const auto hasBoth = [&window] {
            return window.output().contains("key 30\n") && window.output().contains("button 272\n");
        };
        return waitFor(hasBoth, std::chrono::seconds(2));
    }));
}

} // namespace
} // namespace lumacap::harness
