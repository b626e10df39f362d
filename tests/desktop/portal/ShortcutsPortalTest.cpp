#include "harness/Captures.h"
#include "harness/Pictures.h"
#include "harness/Rest.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/WestonDesktop.h"
#include "portal/PortalFixture.h"

#include <QDBusMessage>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr QSize screenSize{640, 480};

struct ShortcutsPortal : testing::Test {
    ShortcutsPortal() { saveCaptures(desktop); }

    /// Has the portal tell that a shortcut was pressed.
    static void press(Agent &agent, const QString &id)
    {
        auto signal = QDBusMessage::createSignal(u"/"_s, u"org.example.StandIn"_s, u"Press"_s);
        signal.setArguments({id});
        agent.bus().send(signal);
    }

    static bool isSaid(const Process &portal, const QByteArray &line, int times = 1)
    {
        return waitFor([&] { return portal.output().count('\n' + line + '\n') >= times; });
    }

    bool isCaptured()
    {
        return waitFor([this] { return !capturesIn(desktop.folder(u"pictures"_s)).isEmpty(); });
    }

    WestonDesktop desktop{{.pixels = screenSize}};
    QImage picture = noisePicture(screenSize);
};

TEST_F(ShortcutsPortal, isAskedForBothShortcutsAtOnce)
{
    const Process &portal = startStandInPortal(desktop, picture, {u"shortcuts"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(isSaid(portal, "CTRL+SHIFT+2"));
    EXPECT_EQ(portal.output(),
              "ready\nRegister\nCreateSession\nBindShortcuts\nCTRL+SHIFT+1\nCTRL+SHIFT+2\n");
    EXPECT_TRUE(comesToRest(agent.process().pid(), 2s));
}

TEST_F(ShortcutsPortal, startsACaptureByAPress)
{
    const Process &portal = startStandInPortal(desktop, picture, {u"shortcuts"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(isSaid(portal, "CTRL+SHIFT+2"));
    press(agent, u"shortcut-1"_s);
    EXPECT_TRUE(isCaptured());
    EXPECT_EQ(agent.process().output(), QByteArray());
}

TEST_F(ShortcutsPortal, isAskedAgainWhenItComesBack)
{
    const Process &first = startStandInPortal(desktop, picture, {u"shortcuts"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(isSaid(first, "CTRL+SHIFT+2"));
    desktop.stop(first);
    const Process &second = startStandInPortal(desktop, picture, {u"shortcuts"_s});
    ASSERT_TRUE(isSaid(second, "CTRL+SHIFT+2"));
    press(agent, u"shortcut-1"_s);
    EXPECT_TRUE(isCaptured());
}

TEST_F(ShortcutsPortal, mayRefuseAndTheAgentWorksWithout)
{
    const Process &portal =
        startStandInPortal(desktop, picture, {u"shortcuts"_s, u"BindShortcuts=refuses"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(isSaid(portal, "Close")); // the session that has no use
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_TRUE(isCaptured());
    EXPECT_EQ(agent.process().errors(), QByteArray());
}

TEST_F(ShortcutsPortal, neverAnsweringHoldsNothingUp)
{
    const Process &portal =
        startStandInPortal(desktop, picture, {u"shortcuts"_s, u"CreateSession=ignores"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(isSaid(portal, "CreateSession"));
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_TRUE(isCaptured());
    ASSERT_TRUE(agent.activate(u"quit"_s));
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
}

TEST_F(ShortcutsPortal, withoutTheInterfaceIsAskedForNone)
{
    const Process &portal = startStandInPortal(desktop, picture);
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_TRUE(isCaptured());
    EXPECT_FALSE(portal.output().contains("CreateSession"));
}

} // namespace
} // namespace lumacap::harness
