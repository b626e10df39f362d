#include "HotkeyFixture.h"
#include "harness/OpenMenu.h"
#include "harness/PlainWindow.h"
#include "harness/Rest.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// Shortcuts of a program that does nothing else.
struct HotkeyServiceTest : HotkeyFixture {
    void SetUp() override
    {
        startDesktop(smallScreen());
        screen->lower();
    }
    /// Starts it with shortcuts as settings store them.
    void run(const QStringList &shortcuts)
    {
        probe = &desktop->start(u"probe"_s,
                                QStringList{testedProgram(QStringLiteral(LUMACAP_HOTKEY_PROBE))}
                                    + shortcuts);
    }
    bool says(const QByteArray &line, int times = 1) const
    {
        return waitFor([&] { return probe->output().count(line + '\n') == times; });
    }
    void toggleSuspension() const { probe->send(SIGUSR1); }
    void registerTwiceAgain() const { probe->send(SIGUSR2); }

    Process *probe = nullptr;
};

const QString controlShiftOne = u"18:4608"_s;
const QString controlShiftTwo = u"19:4608"_s;

TEST_F(HotkeyServiceTest, answersForEachShortcut)
{
    const HeldShortcut other(display(), selectionShortcut);
    run({controlShiftOne, controlShiftTwo, u"4660:4608"_s, controlShiftOne});
    EXPECT_TRUE(says("live 1"));
    EXPECT_TRUE(says("refused 2"));
    EXPECT_TRUE(says("refused 3"));
    EXPECT_TRUE(says("refused 4"));
    EXPECT_TRUE(probe->output().startsWith("asked\n")) << probe->output().toStdString();
    pressFullScreen();
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(HotkeyServiceTest, answersOnceThoughTheShortcutsAreRegisteredAgainAtOnce)
{
    run({controlShiftOne, controlShiftTwo});
    ASSERT_TRUE(says("live 2"));
    registerTwiceAgain();
    ASSERT_TRUE(says("asked", 3));
    EXPECT_TRUE(says("live 2", 2));
    EXPECT_TRUE(says("live 1", 2));
    pressFullScreen();
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(HotkeyServiceTest, aRefusedShortcutIsHadAtTheNextRegistrationOnceItIsFree)
{
    {
        const HeldShortcut other(display(), fullScreenShortcut);
        run({controlShiftOne});
        ASSERT_TRUE(says("refused 1"));
    }
    ASSERT_TRUE(waitFor([this] { return isFree(display(), fullScreenShortcut); }));
    registerTwiceAgain();
    EXPECT_TRUE(says("live 1"));
    pressFullScreen();
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(HotkeyServiceTest, aSuspendedShortcutGoesToTheWindowInFront)
{
    run({controlShiftOne});
    ASSERT_TRUE(says("live 1"));
    auto recorder = PlainWindow::shown(display(), {100, 100, 300, 200});
    recorder.listen();
    recorder.takeFocus();
    toggleSuspension();
    ASSERT_TRUE(says("suspended"));
    ASSERT_TRUE(waitFor([this] { return isFree(display(), fullScreenShortcut); }));
    pressFullScreen();
    EXPECT_TRUE(waitFor([&] { return recorder.keyEvents() == 2 * 3; }));

    toggleSuspension();
    ASSERT_TRUE(says("resumed"));
    ASSERT_TRUE(waitFor([this] { return !isFree(display(), fullScreenShortcut); }));
    EXPECT_TRUE(says("pressed 1", 0));
    pressFullScreen();
    EXPECT_TRUE(says("pressed 1"));
    EXPECT_TRUE(says("live 1")); // it was all along
}

TEST_F(HotkeyServiceTest, aSuspendedShortcutDoesNotFireInAMenu)
{
    run({controlShiftOne});
    ASSERT_TRUE(says("live 1"));
    toggleSuspension();
    ASSERT_TRUE(says("suspended"));
    OpenMenu menu(display(), {100, 100, 100, 100});
    pressFullScreen();
    ASSERT_TRUE(waitFor([&] { return menu.isOpen() && menu.keys() == 3; }));
    toggleSuspension();
    ASSERT_TRUE(says("resumed"));
    ASSERT_TRUE(comesToRest(probe->pid(), std::chrono::milliseconds(100)));
    pressFullScreen();
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(HotkeyServiceTest, whatIsRegisteredDuringASuspensionIsAnsweredAfterIt)
{
    run({controlShiftOne});
    ASSERT_TRUE(says("live 1"));
    toggleSuspension();
    registerTwiceAgain();
    ASSERT_TRUE(says("asked", 3));
    EXPECT_TRUE(isFree(display(), fullScreenShortcut));
    EXPECT_TRUE(says("live 1"));
    toggleSuspension();
    EXPECT_TRUE(says("live 1", 2));
    pressFullScreen();
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(HotkeyServiceTest, aDesktopWithoutShortcutsAnswersSo)
{
    desktop->set("LUMACAP_HOTKEY_SERVICE", "none");
    run({controlShiftOne, controlShiftTwo});
    EXPECT_TRUE(says("refused 1"));
    EXPECT_TRUE(says("refused 2"));
    registerTwiceAgain();
    EXPECT_TRUE(says("refused 2", 2));
    EXPECT_TRUE(isFree(display(), fullScreenShortcut));
}

} // namespace
} // namespace lumacap::harness
