#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/Rest.h"
#include "harness/Settings.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Longer than the toolkit keeps idle worker threads and the pictures of its cache: both end once,
/// half a minute after their last use.
constexpr std::chrono::seconds settling{35};

TEST(Endurance, anAgentAtRestDoesNotWakeUpForAMinute)
{
    PrivateDesktop desktop(smallScreen());
    TrayHost tray(desktop.bus().address());
    Agent agent(desktop);
    agent.requireReady();
    tray.requireItem();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_FALSE(clipboardPicture(desktop).isNull());
    const pid_t process = agent.process().pid();
    ASSERT_TRUE(comesToRest(process, settling, 90s));
    const std::int64_t before = wakeUps(process);
    EXPECT_FALSE(waitFor([&] { return wakeUps(process) != before; }, 60s))
        << wakeUps(process) - before << " wake-ups";
}

/// Takes captures until `total` have been taken since `watch` began.
void captureUntil(Agent &agent, ClipboardWatch &watch, int &taken, int total)
{
    while (taken < total) {
        const int before = watch.changes();
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([&] { return watch.changes() > before; }));
        ++taken;
    }
}

TEST(Endurance, memoryDoesNotGrowOverTwoHundredCaptures)
{
    constexpr std::int64_t tolerance = 8LL << 20; // a quarter of one picture
    const QSize size(3840, 2160);
    PrivateDesktop desktop({.server = {.size = size}});
    const PaintedScreen screen(desktop.server().display(), photographPicture(size));
    writeSettings(
        desktop,
        {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, desktop.folder(u"pictures"_s)}});
    Agent agent(desktop);
    agent.requireReady();
    ClipboardWatch watch(desktop.server().display());
    const pid_t process = agent.process().pid();
    int taken = 0;
    captureUntil(agent, watch, taken, 20);
    ASSERT_TRUE(comesToRest(process, 4s, 40s));
    const std::int64_t before = memoryOf(process);
    captureUntil(agent, watch, taken, 200);
    ASSERT_TRUE(comesToRest(process, 4s, 40s));
    const std::int64_t after = memoryOf(process);
    EXPECT_LT(after - before, tolerance)
        << before / 1024 << " KiB, then " << after / 1024 << " KiB";
}

TEST(Endurance, atRestTheAgentHoldsMuchLessThanACaptureNeeds)
{
    PrivateDesktop desktop(smallScreen());
    Agent agent(desktop);
    agent.requireReady();
    const pid_t process = agent.process().pid();
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_FALSE(clipboardPicture(desktop).isNull());
        const std::int64_t working = pagesOf(process);
        EXPECT_TRUE(waitFor([&] { return pagesOf(process) < working / 3 * 2; }))
            << working / 1024 << " KiB, then " << pagesOf(process) / 1024 << " KiB";
    }
    EXPECT_TRUE(comesToRest(process, 5s)) << "giving back woke the agent up again";
}

TEST(Endurance, atRestTheAgentHoldsThePngOfWhatItOffers)
{
    constexpr std::int64_t quarter = 8LL << 20; // of the pixels
    const QSize size(3840, 2160);
    PrivateDesktop desktop({.server = {.size = size}});
    Agent agent(desktop);
    agent.requireReady();
    const pid_t process = agent.process().pid();
    ASSERT_TRUE(comesToRest(process, 4s));
    const std::int64_t before = memoryOf(process);
    ClipboardWatch watch(desktop.server().display());
    int taken = 0;
    captureUntil(agent, watch, taken, 1);
    EXPECT_TRUE(waitFor([&] { return memoryOf(process) < before + quarter; }))
        << before / 1024 << " KiB, then " << memoryOf(process) / 1024 << " KiB";
    EXPECT_EQ(clipboardPicture(desktop).size(), size);
}

TEST(Endurance, afterTenCapturesAndAnothersClipboardTheAgentHoldsWhatItHeldAtFirst)
{
    constexpr std::int64_t tolerance = 3LL << 20; // what plays sounds stays loaded
    PrivateDesktop desktop(smallScreen());
    Agent agent(desktop);
    agent.requireReady();
    const pid_t process = agent.process().pid();
    ASSERT_TRUE(comesToRest(process, 4s));
    const std::int64_t first = pagesOf(process);
    ClipboardWatch watch(desktop.server().display());
    int taken = 0;
    captureUntil(agent, watch, taken, 10);
    desktop.start(u"other"_s,
                  {u"sh"_s, u"-c"_s, u"echo text | xclip -selection clipboard -quiet"_s});
    ASSERT_TRUE(waitFor([&watch] { return watch.changes() == 11; }));
    EXPECT_TRUE(waitFor([&] { return pagesOf(process) < first + tolerance; }))
        << first / 1024 << " KiB, then " << pagesOf(process) / 1024 << " KiB";
}

} // namespace
} // namespace lumacap::harness
