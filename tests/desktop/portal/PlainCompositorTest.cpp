#include "harness/Captures.h"
#include "harness/Pictures.h"
#include "harness/Rest.h"
#include "harness/WaitFor.h"
#include "harness/wayland/WestonDesktop.h"
#include "portal/PortalFixture.h"

#include <QFile>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST(WestonDesktop, showsAPicturePixelForPixel)
{
    WestonDesktop desktop({.pixels = {1200, 700}, .scale = 2});
    const QImage picture = noisePicture({1200, 700});
    desktop.paint(u"any"_s, picture);
    EXPECT_TRUE(waitFor([&] { return differingPixels(picture, desktop.look(u"any"_s)) == 0; }));
}

/// A compositor without a seat, and a session without a portal.
TEST(PlainCompositor, theAgentRunsAndSaysWhatItCanNotDo)
{
    WestonDesktop desktop;
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_EQ(linesOf(agent, 1).size(), 1);
    ASSERT_TRUE(agent.activate(u"selection"_s));
    EXPECT_THAT(
        linesOf(agent, 3),
        testing::ElementsAre(
            "Capture failed: this desktop offers no way to take a picture of the screen",
            "Freeze capture failed: this desktop offers no way to take a picture of the screen",
            "Failed to capture freeze image"));
    ASSERT_TRUE(agent.activate(u"preferences"_s));
    ASSERT_TRUE(agent.activate(u"quit"_s));
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
    EXPECT_EQ(agent.process().errors(), QByteArray());
}

TEST(PlainCompositor, aCaptureIntoAFileFailsInOneLine)
{
    WestonDesktop desktop;
    const QString file = desktop.folder(u"pictures"_s) + u"/capture.png"_s;
    const Answer answer = desktop.ask(program({u"full-screen"_s, u"--output"_s, file}));
    EXPECT_EQ(answer.ending, (Ending{1, 0}));
    EXPECT_EQ(answer.errors,
              "lumacap: no picture was taken: this desktop offers no way to take a picture of the "
              "screen\n");
    EXPECT_THAT(entriesOf(desktop.folder(u"pictures"_s)), testing::IsEmpty());
}

TEST(PlainCompositor, theAgentRestsThere)
{
    WestonDesktop desktop;
    Agent agent(desktop);
    agent.requireReady();
    EXPECT_TRUE(comesToRest(agent.process().pid(), 3s));
}

TEST(PlainCompositor, theAgentEndsWithIt)
{
    WestonDesktop desktop;
    Agent agent(desktop);
    agent.requireReady();
    desktop.end();
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
}

} // namespace
} // namespace lumacap::harness
