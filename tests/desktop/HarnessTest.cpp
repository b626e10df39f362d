#include "harness/Clipboard.h"
#include "harness/ImageReading.h"
#include "harness/PaintedScreen.h"
#include "harness/PrivateDesktop.h"
#include "harness/ShownPicture.h"
#include "harness/Sound.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

DesktopOptions screenOf(const QSize &size)
{
    return {.server = {.size = size}};
}

TEST(Process, tellsHowAProgramEnded)
{
    PrivateDesktop desktop({.windowManager = WindowManager::Nobody});
    EXPECT_EQ(desktop.ask({u"sh"_s, u"-c"_s, u"exit 3"_s}).ending, Ending{.code = 3});
    EXPECT_EQ(desktop.ask({u"sh"_s, u"-c"_s, u"kill -SEGV $$"_s}).ending,
              Ending{.signal = SIGSEGV});
    EXPECT_EQ(desktop.ask({u"no-such-program"_s}).ending, Ending{.code = 127});
}

TEST(Process, endsWithItsChildren)
{
    PrivateDesktop desktop({.windowManager = WindowManager::Nobody});
    const Process &shell =
        desktop.start(u"shell"_s, {u"sh"_s, u"-c"_s, u"sleep 1000 & echo $!; wait"_s});
    ASSERT_TRUE(waitFor([&shell] { return shell.output().endsWith('\n'); }));
    const int sleeper = shell.output().trimmed().toInt();
    ASSERT_EQ(::kill(sleeper, 0), 0);
    desktop.stop(shell);
    EXPECT_TRUE(waitFor([sleeper] { return ::kill(sleeper, 0) != 0; }));
}

/// How many processes live in the desktop whose folders are in `folder`.
int processesIn(const QString &folder)
{
    int count = 0;
    for (const QString &process : QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs)) {
        QFile environment(u"/proc/%1/environ"_s.arg(process));
        if (environment.open(QIODevice::ReadOnly)
            && environment.readAll().contains(folder.toUtf8()))
            ++count;
    }
    return count;
}

TEST(PrivateDesktop, leavesNothingBehind)
{
    QString folder;
    {
        PrivateDesktop desktop;
        folder = QFileInfo(desktop.folder(u"home"_s)).path();
        ASSERT_GT(processesIn(folder), 0);
    }
    EXPECT_FALSE(QFile::exists(folder));
    EXPECT_EQ(processesIn(folder), 0);
}

TEST(PrivateDesktop, isAloneWithItsClipboard)
{
    PrivateDesktop one;
    PrivateDesktop other;
    one.start(u"owner"_s, {u"sh"_s, u"-c"_s, u"echo text | xclip -selection clipboard -quiet"_s});
    EXPECT_TRUE(waitFor([&one] { return clipboardBytes(one, "STRING") == "text\n"; }));
    EXPECT_TRUE(clipboardTypes(other).isEmpty());
}

TEST(PaintedScreen, showsExactlyItsPicture)
{
    PrivateDesktop desktop(screenOf({640, 480}));
    PaintedScreen screen(desktop.server().display(), noisePicture({640, 480}));
    const auto painted = noisePicture({640, 480}, 2);
    screen.paint(painted);
    EXPECT_EQ(differingPixels(painted, shownOn(desktop.server().display())), 0);
}

TEST(PaintedScreen, expectsThePointerAtItsHotSpot)
{
    PrivateDesktop desktop(screenOf({640, 480}));
    const auto painted = noisePicture({640, 480});
    PaintedScreen screen(desktop.server().display(), painted);
    screen.placePointer({100, 200});
    EXPECT_EQ(differingPixels(painted, screen.expected()), 313); // the arrow's opaque pixels
    EXPECT_EQ(differingPixels(painted.copy(QRect(95, 193, 24, 30)),
                              screen.expected(QRect(95, 193, 24, 30))),
              313);
    const auto place = desktop.ask({u"xdotool"_s, u"getmouselocation"_s}).output;
    EXPECT_TRUE(place.startsWith("x:100 y:200 ")) << place.toStdString();
}

TEST(Clipboard, isWatchedFromOutside)
{
    PrivateDesktop desktop;
    ClipboardWatch watch(desktop.server().display());
    EXPECT_EQ(watch.changes(), 0);
    desktop.start(u"owner"_s,
                  {u"sh"_s, u"-c"_s, u"echo text | xclip -selection clipboard -quiet"_s});
    EXPECT_TRUE(waitFor([&watch] { return watch.changes() == 1; }));
}

TEST(SoundServer, hearsEventSounds)
{
    PrivateDesktop desktop;
    SoundServer sounds(desktop);
    EXPECT_EQ(sounds.soundsBegun(), 0);
    desktop.start(u"player"_s,
                  {u"paplay"_s, u"--property=event.id=screen-capture"_s,
                   u"/usr/share/sounds/freedesktop/stereo/screen-capture.oga"_s});
    EXPECT_TRUE(waitFor([&sounds] { return sounds.isPlaying(u"screen-capture"_s); }));
    EXPECT_TRUE(waitFor([&sounds] { return sounds.soundsBegun() == 1; }));
}

TEST(TrayHost, canComeAndGoAndComeAgain)
{
    PrivateDesktop desktop;
    const auto hasTray = [&desktop] {
        return desktop
            .ask({u"dbus-send"_s, u"--session"_s, u"--print-reply"_s,
                  u"--dest=org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                  u"org.freedesktop.DBus.Properties.Get"_s,
                  u"string:org.kde.StatusNotifierWatcher"_s,
                  u"string:IsStatusNotifierHostRegistered"_s})
            .output.contains("boolean true");
    };
    {
        const TrayHost host(desktop.bus().address());
        EXPECT_TRUE(hasTray());
    }
    EXPECT_FALSE(hasTray());
    const TrayHost host(desktop.bus().address());
    EXPECT_TRUE(hasTray());
}

} // namespace
} // namespace lumacap::harness
