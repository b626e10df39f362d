#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <QDBusConnectionInterface>

#include <csignal>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// An agent on a KWin that stops in its tracks, or ends.
struct KWinSilenceTest : testing::Test {
    KWinSilenceTest()
        : kwin(static_cast<pid_t>(
              desktop.connection().interface()->servicePid(u"org.kde.KWin"_s).value()))
    {
        writeSettings(
            desktop,
            {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, desktop.folder(u"pictures"_s)}});
        agent = std::make_unique<Agent>(desktop);
        agent->requireReady();
    }
    ~KWinSilenceTest() override { kill(kwin, SIGCONT); }

    bool hasSaved() { return !capturesIn(desktop.folder(u"pictures"_s)).isEmpty(); }

    KWinDesktop desktop{KWinOptions{.size = {960, 600}}};
    pid_t kwin;
    std::unique_ptr<Agent> agent;
};

TEST_F(KWinSilenceTest, aCaptureFailsInItsTimeAndTheNextOneIsTaken)
{
    kill(kwin, SIGSTOP);
    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    EXPECT_TRUE(agent->activatePlainly()); // the agent's loop turns meanwhile
    EXPECT_TRUE(waitFor([this] {
        return agent->process().output().contains("Capture failed: KWin does not answer\n");
    }));
    EXPECT_FALSE(hasSaved());
    kill(kwin, SIGCONT);
    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    EXPECT_TRUE(waitFor([this] { return hasSaved(); }));
}

TEST_F(KWinSilenceTest, aSelectionFailsInItsTime)
{
    kill(kwin, SIGSTOP);
    ASSERT_TRUE(agent->activate(u"selection"_s));
    EXPECT_TRUE(waitFor(
        [this] { return agent->process().output().contains("Failed to capture freeze image\n"); },
        std::chrono::seconds(30)));
    EXPECT_EQ(agent->process().ending(), std::nullopt);
}

TEST_F(KWinSilenceTest, theAgentEndsWithKWin)
{
    kill(kwin, SIGKILL);
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), Ending{})
        << agent->process().errors().toStdString();
}

} // namespace
} // namespace lumacap::harness
