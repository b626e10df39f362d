#include "everywhere/EverywhereFixture.h"
#include "harness/Captures.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

class EveryCaptureTest : public EverywhereFixture { };

TEST_P(EveryCaptureTest, theWholeFirstDisplayIsInTheFileAndOnTheClipboard)
{
    startAgent();
    ASSERT_TRUE(agent().activate(u"full-screen"_s));

    EXPECT_TRUE(equalsOutput(0, savedPicture()));
    EXPECT_TRUE(equalsOutput(0, clipboardPicture()));
}

TEST_P(EveryCaptureTest, thePointerIsInThePicture)
{
    startAgent();
    hands().moveTo({400, 300});
    ASSERT_TRUE(agent().activate(u"full-screen"_s));
    const QImage seen = savedPicture();
    const QImage without = shown({0, 0, 1200, 700});
    ASSERT_EQ(seen.size(), without.size());

    const double scale = seen.width() / 1200.0;
    const QRect around = QRectF(370 * scale, 270 * scale, 80 * scale, 80 * scale).toRect();
    EXPECT_GT(differingPixels(without.copy(around), seen.copy(around)), 20);
}

TEST_P(EveryCaptureTest, theTrayMenuTakesAPicture)
{
    TrayHost tray(desktop().bus().address());
    startAgent();
    tray.requireItem();

    ASSERT_TRUE(tray.click(fullScreenTitle()));

    EXPECT_TRUE(equalsOutput(0, savedPicture()));
}

TEST_P(EveryCaptureTest, aFileIsWrittenWithoutAnAgent)
{
    const QString path = desktop().folder(u"pictures"_s) + u"/shot.png"_s;
    EXPECT_EQ(desktop().ask(program({u"full-screen"_s, u"--output"_s, path})).ending, Ending{});

    EXPECT_TRUE(equalsOutput(0, pictureIn(desktop(), path)));
}

TEST_P(EveryCaptureTest, aCommandReachesTheRunningAgent)
{
    startAgent();

    EXPECT_EQ(desktop().ask(program({u"full-screen"_s})).ending, Ending{});

    EXPECT_TRUE(equalsOutput(0, savedPicture()));
}

TEST_P(EveryCaptureTest, theShortcutsTakePictures)
{
    startAgent();
    // Live a little after the agent is ready: pressed until it tells.
    ASSERT_TRUE(waitFor([this] {
        hands().press({evdev::control, evdev::shift, evdev::one});
        return waitFor([this] { return !files().isEmpty(); }, std::chrono::milliseconds(500));
    }));
    EXPECT_TRUE(equalsOutput(0, pictureIn(desktop(), files().first())));

    // Each desktop makes a shortcut live in its own time.
    EXPECT_TRUE(waitFor([this] {
        hands().press({evdev::control, evdev::shift, evdev::two});
        return waitFor([this] { return overlayIsUp(); }, std::chrono::seconds(2));
    }));
}

TEST_P(EveryCaptureTest, theAgentEndsWhenItIsToldTo)
{
    startAgent();
    openOverlay();

    ASSERT_TRUE(agent().activate(u"quit"_s));

    EXPECT_EQ(agent().process().waitForEnd(std::chrono::seconds(20)), Ending{.code = 0});
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
}

TEST_P(EveryCaptureTest, theAgentEndsWellWithTheDesktopDuringASelection)
{
    startAgent();
    openOverlay();

    desktop().end();

    EXPECT_EQ(agent().process().waitForEnd(std::chrono::seconds(20)), Ending{})
        << agent().process().errors().toStdString();
    EXPECT_THAT(entriesOf(desktop().folder(u"pictures"_s)), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(On, EveryCaptureTest, testing::ValuesIn(everyDesktop()),
                         [](const auto &make) { return make.param.name; });

} // namespace
} // namespace lumacap::harness
