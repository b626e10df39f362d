#include "harness/Captures.h"
#include "harness/Input.h"
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

/// A compositor with a person before it, whose clipboard is filled by the program with the focus
/// alone.
class SeatedCompositor : public testing::Test {
protected:
    SeatedCompositor()
    {
        startStandInPortal(m_desktop, m_picture);
        saveCaptures(m_desktop);
        m_agent = std::make_unique<Agent>(m_desktop);
        m_agent->requireReady();
    }

    WestonDesktop &desktop() { return m_desktop; }
    Agent &agent() { return *m_agent; }
    const QImage &picture() const { return m_picture; }
    QStringList files() const { return capturesIn(m_desktop.folder(u"pictures"_s)); }

    void openOverlay()
    {
        m_desktop.paint(u"any"_s, m_picture);
        ASSERT_TRUE(waitFor([this] { return differingAtTheCorner() == 0; }));
        ASSERT_TRUE(m_agent->activate(u"selection"_s));
        ASSERT_TRUE(waitFor([this] { return differingAtTheCorner() > 0; }));
    }
    QImage pasted()
    {
        const QByteArray bytes = m_desktop.clipboardBytes("image/png", 4s);
        return bytes.isEmpty() ? QImage() : readImage(m_desktop, bytes, ImageKind::Png);
    }

private:
    /// How many pixels of the screen are not the picture's, where no pointer is.
    qsizetype differingAtTheCorner()
    {
        const QRect corner(0, 770, 30, 30);
        return differingPixels(m_picture.copy(corner), m_desktop.look(u"any"_s).copy(corner));
    }

    WestonDesktop m_desktop{{.seat = Seat::Present}};
    QImage m_picture = noisePicture({1280, 800});
    std::unique_ptr<Agent> m_agent;
};

TEST_F(SeatedCompositor, whatReturnConfirmsIsPasted)
{
    openOverlay();

    // No drag: where a window of an X server gets its pointer from outside, it is now and then off.
    ASSERT_TRUE(waitFor([this] {
        desktop().input().press({evdev::enter});
        return waitFor([this] { return !files().isEmpty(); }, 4s);
    }));

    EXPECT_TRUE(waitFor([this] { return differingPixels(picture(), pasted()) == 0; }));
    EXPECT_EQ(agent().process().errors(), QByteArray());
}

TEST_F(SeatedCompositor, aCaptureWithoutTheFocusIsSavedAndNotCopied)
{
    ASSERT_TRUE(agent().activate(u"full-screen"_s));

    EXPECT_TRUE(waitFor([this] { return files().size() == 1; }));
    EXPECT_TRUE(waitFor(
        [this] { return agent().process().errors().startsWith("lumacap: nothing was copied: "); }));
    EXPECT_THAT(desktop().clipboardTypes(), testing::IsEmpty());
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
