#include "harness/Sound.h"
#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/SmallDisk.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// A desktop with a sound server.
struct SoundTest : testing::Test {
    SoundTest()
        : desktop(smallScreen())
        , screen(desktop.server().display(), noisePicture({640, 480}))
        , sounds(desktop)
        , pictures(desktop.folder(u"pictures"_s))
    {
    }

    void saveTo(const QString &folder)
    {
        writeSettings(desktop, {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, folder}});
    }

    bool hears(int count)
    {
        return waitFor([this, count] { return sounds.soundsBegun() >= count; });
    }

    /// A capture into `folder` that must not sound, then one that certainly does; how many sounds
    /// there were.
    int soundsOfACaptureInto(const QString &folder, const QStringList &wrapper = {})
    {
        saveTo(folder);
        Agent agent(desktop, {}, wrapper);
        agent.requireReady();
        ClipboardWatch watch(desktop.server().display());
        EXPECT_TRUE(agent.activate(u"full-screen"_s));
        EXPECT_TRUE(waitFor([&watch] { return watch.changes() > 0; }));
        // Answered after the save, which does not pause between clipboard and sound.
        EXPECT_TRUE(agent.activatePlainly());
        writeSettings(desktop, {});
        EXPECT_TRUE(agent.activate(u"full-screen"_s));
        EXPECT_TRUE(waitFor([&] { return sounds.isPlaying(u"screen-capture"_s); }));
        // A sound of the first capture would have begun before that of the second.
        EXPECT_TRUE(hears(1));
        agent.process().terminate();
        return sounds.soundsBegun();
    }

    PrivateDesktop desktop;
    PaintedScreen screen;
    SoundServer sounds;
    QString pictures;
};

TEST_F(SoundTest, theDesktopsCaptureSoundFollowsClipboardAndFile)
{
    saveTo(pictures);
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_TRUE(hears(1));
    EXPECT_NE(desktop.selectionOwner("CLIPBOARD"), 0U);
    EXPECT_THAT(capturesIn(pictures), testing::SizeIs(1));
    EXPECT_TRUE(waitFor([this] { return sounds.isPlaying(u"screen-capture"_s); }));
}

TEST_F(SoundTest, isPlayedThoughNothingIsStored)
{
    writeSettings(desktop, {{u"copyToClipboard"_s, u"false"_s}, {u"saveToFile"_s, u"false"_s}});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_TRUE(hears(1));
    EXPECT_EQ(desktop.selectionOwner("CLIPBOARD"), 0U);
}

TEST_F(SoundTest, twoRequestsAtOnceAreTwoCaptures)
{
    Agent agent(desktop);
    agent.requireReady();
    agent.activateSoon(u"full-screen"_s);
    agent.activateSoon(u"full-screen"_s);
    EXPECT_TRUE(hears(2));
}

TEST_F(SoundTest, isNotPlayedWhenTheFolderIsMissing)
{
    EXPECT_EQ(soundsOfACaptureInto(pictures + "/gone"_L1), 1);
}

TEST_F(SoundTest, isNotPlayedWhenTheDiskIsReadOnly)
{
    const QString disk = desktop.folder(u"disk"_s);
    EXPECT_EQ(soundsOfACaptureInto(disk, withSmallDisk(disk, 64, Access::ReadOnly)), 1);
}

TEST_F(SoundTest, isPlayedThoughTheDiskIsFull)
{
    const QString disk = desktop.folder(u"disk"_s);
    saveTo(disk);
    Agent agent(desktop, {}, withSmallDisk(disk, 64));
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_TRUE(hears(1));
}

TEST_F(SoundTest, isNotPlayedForACaptureIntoANamedFile)
{
    const auto done =
        desktop.ask(program({u"full-screen"_s, u"--output"_s, pictures + "/a.png"_L1}));
    ASSERT_EQ(done.ending, Ending{});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_TRUE(hears(1));
    EXPECT_EQ(sounds.soundsBegun(), 1);
}

TEST(SilentSoundServer, doesNotHoldUpCaptures)
{
    PrivateDesktop desktop(smallScreen());
    const SilentSoundServer server(desktop);
    PaintedScreen screen(desktop.server().display(), noisePicture({640, 480}));
    Agent agent(desktop);
    agent.requireReady();
    for (const std::uint32_t seed : {2U, 3U, 4U}) {
        ClipboardWatch watch(desktop.server().display());
        screen.paint(noisePicture({640, 480}, seed));
        const auto begin = std::chrono::steady_clock::now();
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([&watch] { return watch.changes() > 0; }));
        EXPECT_TRUE(agent.activatePlainly()); // the agent answers
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
        EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
    }
    ASSERT_TRUE(agent.activate(u"quit"_s));
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
}

} // namespace
} // namespace lumacap::harness
