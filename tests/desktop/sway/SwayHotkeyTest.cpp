#include "harness/Settings.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"
#include "harness/wayland/SwayDesktop.h"

#include <gtest/gtest.h>

#include <QFile>

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString controlShiftOne = u"18:4608"_s; // as settings store them
const QString controlShiftTwo = u"19:4608"_s;
const QString commandOne = u"18:256"_s;

/// Shortcuts of a program that does nothing else, in a sway of somebody who has shortcuts, too.
class SwayHotkeys : public testing::Test {
protected:
    void start(const QStringList &configuration, const QStringList &shortcuts,
               const std::string &layout = "us")
    {
        startDesktop(configuration, layout);
        startProbe(shortcuts);
    }
    void startDesktop(const QStringList &configuration, const std::string &layout = "us")
    {
        m_desktop = std::make_unique<SwayDesktop>(
            SwayOptions{.configuration = configuration, .keyboardLayout = layout});
    }
    void startProbe(const QStringList &shortcuts)
    {
        m_probe = &m_desktop->start(u"probe"_s,
                                    QStringList{testedProgram(QStringLiteral(LUMACAP_HOTKEY_PROBE))}
                                        + shortcuts);
    }
    bool says(const QByteArray &line, int times = 1) const
    {
        return waitFor([&] { return m_probe->output().count(line + '\n') == times; });
    }
    void press(std::uint32_t code) { hands().press({evdev::control, evdev::shift, code}); }
    /// Presses our second shortcut, and whether all that came before is told exactly so often.
    testing::AssertionResult saysExactly(const QByteArray &line, int times)
    {
        const auto before = static_cast<int>(m_probe->output().count("pressed 2\n"));
        press(evdev::two);
        if (!says("pressed 2", before + 1))
            return testing::AssertionFailure() << "the second shortcut is not told";
        const auto told = m_probe->output().count(line + '\n');
        return told == times ? testing::AssertionSuccess()
                             : testing::AssertionFailure() << "told " << told << " times";
    }
    VirtualInput &hands() { return m_desktop->virtualInput(); }

    std::unique_ptr<SwayDesktop> m_desktop;
    Process *m_probe = nullptr;
};

TEST_F(SwayHotkeys, areToldOncePressed)
{
    start({}, {controlShiftOne, controlShiftTwo, commandOne});
    ASSERT_TRUE(says("live 1") && says("live 2") && says("live 3"));
    press(evdev::one);
    EXPECT_TRUE(saysExactly("pressed 1", 1));
    hands().press({evdev::super, evdev::one});
    EXPECT_TRUE(says("pressed 3"));
    hands().press({evdev::control, evdev::one});
    hands().press({evdev::control, evdev::shift, evdev::alt, evdev::one});
    EXPECT_TRUE(saysExactly("pressed 1", 1)); // with these modifiers and no others
}

TEST_F(SwayHotkeys, areToldOnceHoweverLongTheKeyIsHeld)
{
    start({u"input * repeat_delay 30"_s, u"input * repeat_rate 50"_s},
          {controlShiftOne, controlShiftTwo});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    for (const std::uint32_t code : {evdev::control, evdev::shift, evdev::one})
        hands().key(code, Way::Down);
    EXPECT_FALSE(waitFor([this] { return m_probe->output().count("pressed 1\n") > 1; }, 500ms));
    for (const std::uint32_t code : {evdev::one, evdev::shift, evdev::control})
        hands().key(code, Way::Up);
    EXPECT_TRUE(saysExactly("pressed 1", 1));
}

TEST_F(SwayHotkeys, workWhateverIsLocked)
{
    start({}, {controlShiftOne, controlShiftTwo});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    hands().press({evdev::capsLock});
    press(evdev::one);
    EXPECT_TRUE(saysExactly("pressed 1", 1));
    hands().press({evdev::numLock});
    press(evdev::one);
    EXPECT_TRUE(saysExactly("pressed 1", 2));
    hands().press({evdev::capsLock});
    press(evdev::one);
    EXPECT_TRUE(saysExactly("pressed 1", 3));
}

TEST_F(SwayHotkeys, areTheSameKeysInEveryLayout)
{
    start({}, {controlShiftOne, controlShiftTwo}, "us,fr");
    ASSERT_TRUE(says("live 1") && says("live 2"));
    hands().switchTo(1);
    press(evdev::one);
    EXPECT_TRUE(saysExactly("pressed 1", 1));
}

TEST_F(SwayHotkeys, yieldToThoseInThePersonsConfiguration)
{
    start({u"set $both Ctrl+Shift"_s, u"bindsym $both+1 exec touch $XDG_RUNTIME_DIR/symbol"_s,
           u"bindcode Mod4+10 exec touch $XDG_RUNTIME_DIR/code"_s},
          {controlShiftOne, controlShiftTwo, commandOne});
    ASSERT_TRUE(says("refused 1") && says("live 2") && says("refused 3"));
    press(evdev::one);
    hands().press({evdev::super, evdev::one});
    const QString folder = m_desktop->folder(u"run"_s);
    EXPECT_TRUE(waitFor([&] {
        return QFile::exists(folder + u"/symbol"_s) && QFile::exists(folder + u"/code"_s);
    }));
    EXPECT_TRUE(saysExactly("pressed 1", 0));
}

TEST_F(SwayHotkeys, leaveAKeyCodeThatWasBoundByHandWhereItIs)
{
    startDesktop({});
    m_desktop->command(u"bindcode Ctrl+Shift+10 exec touch $XDG_RUNTIME_DIR/by-hand"_s);
    startProbe({controlShiftOne, controlShiftTwo});
    ASSERT_TRUE(says("live 2"));
    press(evdev::one);
    const QString file = m_desktop->folder(u"run"_s) + u"/by-hand"_s;
    EXPECT_TRUE(waitFor([&] { return QFile::exists(file); }));
    EXPECT_TRUE(saysExactly("pressed 1", 0));
}

TEST_F(SwayHotkeys, giveBackASymbolThatWasBoundByHand)
{
    startDesktop({});
    m_desktop->command(u"bindsym Ctrl+Shift+1 exec touch $XDG_RUNTIME_DIR/by-hand"_s);
    startProbe({controlShiftOne});
    ASSERT_TRUE(says("live 1"));
    m_probe->send(SIGUSR1); // suspends
    ASSERT_TRUE(says("suspended"));
    const QString file = m_desktop->folder(u"run"_s) + u"/by-hand"_s;
    EXPECT_TRUE(waitFor([&] {
        press(evdev::one);
        return QFile::exists(file);
    }));
}

TEST_F(SwayHotkeys, stayAfterTheConfigurationIsReadAnew)
{
    start({}, {controlShiftOne, controlShiftTwo});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    for (int round = 1; round <= 3; ++round) {
        m_desktop->reload();
        EXPECT_TRUE(waitFor([&] {
            press(evdev::one);
            return m_probe->output().count("pressed 1\n") >= round;
        }));
        EXPECT_EQ(m_probe->output().count("live 1\n"), 1);
    }
}

TEST_F(SwayHotkeys, belongToTheUsualModeWhicheverTheyWereAskedForIn)
{
    start({u"mode \"re size\" bindsym Ctrl+Shift+1 exec touch $XDG_RUNTIME_DIR/in-mode"_s},
          {controlShiftOne, controlShiftTwo});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    m_desktop->command(u"mode \"re size\""_s);
    press(evdev::one);
    const QString file = m_desktop->folder(u"run"_s) + u"/in-mode"_s;
    EXPECT_TRUE(waitFor([&] { return QFile::exists(file); }));
    m_probe->send(SIGUSR1); // suspends
    ASSERT_TRUE(says("suspended"));
    m_probe->send(SIGUSR1);
    ASSERT_TRUE(says("resumed"));
    EXPECT_TRUE(m_desktop->answer(u"get_binding_state"_s).contains("re size"));
    m_desktop->command(u"mode default"_s);
    EXPECT_TRUE(waitFor([&] {
        press(evdev::one);
        return m_probe->output().contains("pressed 1\n");
    }));
}

TEST_F(SwayHotkeys, reachTheWindowWhileSuspended)
{
    start({}, {controlShiftOne});
    ASSERT_TRUE(says("live 1"));
    const Process &window = m_desktop->startWindow({});
    ASSERT_TRUE(waitFor([&] { return window.output().contains("focus\n"); }));
    m_probe->send(SIGUSR1);
    ASSERT_TRUE(says("suspended"));
    EXPECT_TRUE(waitFor([&] {
        press(evdev::one);
        return window.output().contains("key 2\n");
    }));
    const auto before = m_probe->output().count("pressed 1\n");
    m_probe->send(SIGUSR1);
    ASSERT_TRUE(says("resumed"));
    EXPECT_TRUE(waitFor([&] {
        press(evdev::one);
        return m_probe->output().count("pressed 1\n") > before;
    }));
}

TEST_F(SwayHotkeys, areAnsweredAnewWhenTheyAreRegisteredAgain)
{
    start({}, {controlShiftOne, controlShiftOne, u"4660:4608"_s});
    ASSERT_TRUE(says("live 1") && says("refused 2") && says("refused 3"));
    m_probe->send(SIGUSR2);
    EXPECT_TRUE(says("live 1", 2) && says("refused 2", 2));
    press(evdev::one);
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(SwayHotkeys, areNotAskedOfAnotherSwayWhoseSocketWasLeftBehind)
{
    const SwayDesktop other;
    startDesktop({});
    m_desktop->set("SWAYSOCK", other.environment().at("SWAYSOCK"));
    startProbe({controlShiftOne});
    EXPECT_TRUE(says("refused 1"));
}

} // namespace
} // namespace lumacap::harness
