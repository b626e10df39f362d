#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"
#include "harness/XEmbedTray.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

#include <gmock/gmock.h>

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct LifecycleTest : testing::Test {
    PrivateDesktop desktop{smallScreen()};
};

/// Whether the agent ends soon, and by no signal.
bool endsByItself(Agent &agent)
{
    const auto end = agent.process().waitForEnd(usualLimit);
    return end && end->signal == 0;
}

TEST_F(LifecycleTest, endsCleanlyOnTerminationSignals)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        Agent agent(desktop);
        agent.requireReady();
        agent.process().send(signal);
        EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{}) << "signal " << signal;
        EXPECT_TRUE(agent.process().errors().isEmpty()) << agent.process().errors().toStdString();
    }
}

TEST_F(LifecycleTest, endsWellInTheMiddleOfSeveralCaptures)
{
    for (int round = 0; round < 5; ++round) {
        Agent agent(desktop);
        agent.requireReady();
        for (int capture = 0; capture < 5; ++capture)
            agent.activateSoon(u"full-screen"_s);
        agent.process().send(SIGTERM);
        EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
    }
}

TEST_F(LifecycleTest, staysOnASignalThatWasIgnoredWhenItStarted)
{
    Agent agent(desktop, {}, {u"nohup"_s});
    agent.requireReady();
    agent.process().send(SIGHUP);
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
}

TEST_F(LifecycleTest, showsNoWindowAtLaunch)
{
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s)); // launch is over when it has been carried out
    ASSERT_FALSE(clipboardPicture(desktop).isNull());
    const auto visible =
        desktop.ask({u"xdotool"_s, u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"lumacap"_s});
    EXPECT_EQ(visible.output, QByteArray());
}

TEST_F(LifecycleTest, whatIsAskedAsSoonAsTheNameIsThereIsCarriedOut)
{
    for (int round = 0; round < 10; ++round) {
        Agent agent(desktop);
        ASSERT_TRUE(waitFor([&agent] {
            return agent.bus().interface()->isServiceRegistered(u"app.lumacap.Lumacap"_s).value();
        }));
        EXPECT_TRUE(agent.activate(u"full-screen"_s));
        EXPECT_TRUE(waitFor([this] { return desktop.selectionOwner("CLIPBOARD") != 0; }));
        EXPECT_TRUE(agent.activate(u"quit"_s));
        EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
    }
}

TEST_F(LifecycleTest, aStartRightAfterQuitLeavesAnAgent)
{
    for (int round = 0; round < 5; ++round) {
        Agent ending(desktop);
        ending.requireReady();
        ASSERT_TRUE(ending.activate(u"quit"_s));
        Agent next(desktop);
        EXPECT_EQ(ending.process().waitForEnd(usualLimit), Ending{});
        next.requireReady();
        EXPECT_TRUE(next.activate(u"full-screen"_s));
        EXPECT_TRUE(waitFor([this] { return desktop.selectionOwner("CLIPBOARD") != 0; }));
    }
}

TEST_F(LifecycleTest, aCaptureUnderWayIsFinishedOnTermination)
{
    const QString pictures = desktop.folder(u"pictures"_s);
    writeSettings(desktop, {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, pictures}});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    agent.process().send(SIGTERM);
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
    const auto files = capturesIn(pictures);
    ASSERT_THAT(files, testing::SizeIs(1));
    EXPECT_FALSE(pictureIn(desktop, files.first()).isNull());
}

TEST_F(LifecycleTest, endsWithTheXServerWithoutACore)
{
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    desktop.server().end();
    EXPECT_TRUE(endsByItself(agent));
}

TEST_F(LifecycleTest, endsWithTheXServerInTheMiddleOfCapturesWithoutAPartialFile)
{
    const QString pictures = desktop.folder(u"pictures"_s);
    writeSettings(desktop, {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, pictures}});
    Agent agent(desktop);
    agent.requireReady();
    for (int request = 0; request < 40; ++request)
        agent.activateSoon(u"full-screen"_s);
    ASSERT_TRUE(waitFor([&pictures] { return !capturesIn(pictures).isEmpty(); }));
    desktop.server().end();
    EXPECT_TRUE(endsByItself(agent));
    for (const QString &name : entriesOf(pictures))
        EXPECT_EQ(pictureIn(desktop, pictures + u'/' + name).size(), QSize(640, 480))
            << name.toStdString();
}

TEST_F(LifecycleTest, withoutAnXServerTheStartFailsInOneLine)
{
    for (const QByteArray &display : {QByteArray(":9999"), QByteArray()}) {
        desktop.set("DISPLAY", display);
        const auto answer = desktop.ask(program());
        EXPECT_EQ(answer.ending, Ending{.code = 1});
        EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
        EXPECT_TRUE(answer.output.isEmpty()) << answer.output.toStdString();
    }
}

TEST_F(LifecycleTest, withoutASessionBusTheAgentServesTheOlderTray)
{
    XEmbedTray tray(desktop.server().display());
    desktop.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    Agent agent(desktop);
    EXPECT_TRUE(waitFor([&tray] { return tray.dockedCount() == 1; }));
    agent.process().send(SIGTERM);
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
}

TEST_F(LifecycleTest, theEndOfTheSessionBusIsNoCrash)
{
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_FALSE(clipboardPicture(desktop).isNull());
    desktop.bus().end();
    agent.process().send(SIGTERM);
    EXPECT_TRUE(endsByItself(agent));
}

TEST_F(LifecycleTest, standardOutputThatNobodyReadsDoesNotMatter)
{
    Agent agent(desktop, {}, {u"sh"_s, u"-c"_s, u"exec \"$0\" \"$@\" >&-"_s});
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
}

TEST_F(LifecycleTest, aSettingsFileOfRubbishMeansTheDefaults)
{
    writeSettings(desktop,
                  {{u"copyToClipboard"_s, u"@Variant(\\0\\0\\0\\x7f)"_s},
                   {u"fullScreenHotkey"_s, u"@ByteArray({\"keyCode\":)"_s},
                   {u"imageFormat"_s, u"gif"_s}});
    TrayHost tray(desktop.bus().address());
    const Agent agent(desktop);
    tray.requireItem();
    const auto entries = tray.menu();
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries.front().label, fullScreenTitle());
}

} // namespace
} // namespace lumacap::harness
