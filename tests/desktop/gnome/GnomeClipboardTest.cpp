// The clipboard of a GNOME desktop, filled by a program without a window.
#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/GnomeDesktop.h"

#include <gmock/gmock.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

constexpr int pointerReach = 64;

/// A person at a GNOME desktop who copies captures.
class GnomeClipboard : public testing::Test {
protected:
    GnomeClipboard()
        : m_desktop({.xServer = XServerInside::Present})
        , m_picture(noisePicture(m_desktop.outputs().front().pixels))
        , m_agent([this]() -> TestDesktop & {
            m_desktop.paint(m_desktop.outputs().front().name, m_picture);
            // Without them the seat has no keyboard, whose owner alone may paste. The pointer is
            // in the picture: it goes where no test looks.
            m_desktop.input().moveTo({2, 2});
            writeSettings(m_desktop, {{u"copyToClipboard"_s, u"true"_s}});
            return m_desktop;
        }())
    {
        m_agent.requireReady();
    }

    GnomeDesktop &desktop() { return m_desktop; }
    Agent &agent() { return m_agent; }

    void copy() { ASSERT_TRUE(m_agent.activate(u"full-screen"_s)); }
    /// Whether a Wayland program pastes the picture of the screen.
    bool isPasted()
    {
        return waitFor([this] {
            const QByteArray bytes = m_desktop.clipboardBytes("image/png", std::chrono::seconds(5));
            return isThePicture(bytes);
        });
    }
    /// Whether an X11 program does.
    bool isPastedByX11()
    {
        return waitFor([this] {
            const Answer answer = m_desktop.ask(
                {u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, u"image/png"_s, u"-o"_s});
            return isThePicture(answer.output);
        });
    }

private:
    bool isThePicture(const QByteArray &bytes)
    {
        if (bytes.isEmpty())
            return false;
        const QImage seen = readImage(m_desktop, bytes, ImageKind::Png);
        const QRect below = m_picture.rect().adjusted(0, pointerReach, 0, 0);
        return seen.size() == m_picture.size()
            && differingPixels(m_picture.copy(below), seen.copy(below)) == 0;
    }

    GnomeDesktop m_desktop;
    QImage m_picture;
    Agent m_agent;
};

} // namespace

TEST_F(GnomeClipboard, isPastedByWaylandAndX11Programs)
{
    copy();

    EXPECT_TRUE(isPasted());
    EXPECT_TRUE(isPastedByX11());
}

TEST_F(GnomeClipboard, outlivesTheAgent)
{
    copy();
    ASSERT_TRUE(isPasted());

    EXPECT_EQ(agent().process().terminate(usualLimit), Ending{});

    EXPECT_TRUE(isPasted());
}

TEST_F(GnomeClipboard, isEmptyOfWhatWasThereBefore)
{
    ASSERT_EQ(desktop().ask({u"wl-copy"_s, u"words"_s}).ending, Ending{});

    copy();

    EXPECT_TRUE(isPasted());
    EXPECT_THAT(desktop().clipboardTypes(), testing::Not(testing::Contains("text/plain")));
}

} // namespace lumacap::harness
