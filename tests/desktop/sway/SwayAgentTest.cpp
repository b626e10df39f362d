#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/SwayDesktop.h"

#include <gtest/gtest.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// The program with its designed shortcuts: 1 takes the screen and 2 selects, with Control and
/// Shift.
class SwayAgent : public testing::Test {
protected:
    void SetUp() override
    {
        m_noise = noisePicture(QSize(1280, 800));
        m_desktop.paint(u"HEADLESS-1"_s, m_noise);
        m_desktop.input().moveTo({3, 3});
        writeSettings(
            m_desktop,
            {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, m_desktop.folder(u"pictures"_s)}});
        m_agent = std::make_unique<Agent>(m_desktop);
        m_agent->requireReady();
    }
    int captures() { return static_cast<int>(capturesIn(m_desktop.folder(u"pictures"_s)).size()); }
    void press(std::uint32_t code)
    {
        m_desktop.input().press({evdev::control, evdev::shift, code});
    }
    /// Presses the shortcut until a picture has come of it: it may not be live yet.
    bool takesAPicture()
    {
        const int before = captures();
        return waitFor([&] {
            press(evdev::one);
            return waitFor([&] { return captures() > before; }, std::chrono::seconds(1));
        });
    }
    bool isBound(const QString &keys)
    {
        // The only question that sway answers about a binding is the one that takes it away.
        return m_desktop.obeys(u"unbindcode --no-repeat --inhibited "_s + keys);
    }
    bool overlayIsUp()
    {
        const QRect corner(0, 770, 30, 30);
        return differingPixels(m_noise.copy(corner), m_desktop.look(u"HEADLESS-1"_s).copy(corner))
            > 0;
    }

    SwayDesktop m_desktop{{.configuration = {u"mode other bindsym a nop"_s}}};
    QImage m_noise;
    std::unique_ptr<Agent> m_agent;
};

TEST_F(SwayAgent, takesThePictureThatItsShortcutAsksFor)
{
    EXPECT_TRUE(takesAPicture());
}

TEST_F(SwayAgent, selectsByItsShortcut)
{
    ASSERT_TRUE(takesAPicture());
    press(evdev::two);
    EXPECT_TRUE(waitFor([this] { return overlayIsUp(); }));
    m_desktop.input().press({evdev::escape});
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
}

TEST_F(SwayAgent, isReachedByTheCommandThatAPersonBinds)
{
    const Answer said = m_desktop.ask(program({u"selection"_s}));
    EXPECT_EQ(said.ending, Ending{});
    EXPECT_TRUE(waitFor([this] { return overlayIsUp(); }));
}

TEST_F(SwayAgent, leavesNoBindingBehindWhenItIsTerminated)
{
    ASSERT_TRUE(takesAPicture());
    EXPECT_EQ(m_agent->process().terminate(usualLimit), Ending{});
    EXPECT_FALSE(isBound(u"Ctrl+Shift+10"_s));
    EXPECT_FALSE(isBound(u"Ctrl+Shift+11"_s));
}

TEST_F(SwayAgent, hasItsShortcutsInSwayAsLongAsItRuns)
{
    ASSERT_TRUE(takesAPicture());
    EXPECT_TRUE(isBound(u"Ctrl+Shift+10"_s));
    EXPECT_TRUE(waitFor([this] { return isBound(u"Ctrl+Shift+11"_s); })); // asked for after it
}

TEST_F(SwayAgent, leavesNoBindingBehindWhenItIsTerminatedInAnotherMode)
{
    ASSERT_TRUE(takesAPicture());
    m_desktop.command(u"mode other"_s);
    EXPECT_EQ(m_agent->process().terminate(usualLimit), Ending{});
    EXPECT_TRUE(m_desktop.answer(u"get_binding_state"_s).contains("other"));
    m_desktop.command(u"mode default"_s);
    EXPECT_FALSE(isBound(u"Ctrl+Shift+10"_s));
}

TEST_F(SwayAgent, endsWellWithTheCompositor)
{
    ASSERT_TRUE(takesAPicture());
    m_desktop.end();
    EXPECT_EQ(m_agent->process().waitForEnd(usualLimit), Ending{});
}

} // namespace
} // namespace lumacap::harness
