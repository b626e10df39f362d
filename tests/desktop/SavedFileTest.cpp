#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/SmallDisk.h"
#include "harness/WaitFor.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimeZone>

#include <gmock/gmock.h>

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// A small desktop showing a picture, with files switched on.
struct SavedFileTest : testing::Test {
    SavedFileTest()
        : desktop(smallScreen())
        , screen(desktop.server().display(), photographPicture({640, 480}))
        , pictures(desktop.folder(u"pictures"_s))
    {
        configure(pictures);
    }

    void configure(const QString &folder, const QString &format = u"png"_s)
    {
        writeSettings(desktop,
                      {{u"saveToFile"_s, u"true"_s},
                       {u"saveDirectory"_s, folder},
                       {u"imageFormat"_s, format}});
    }

    /// Takes a capture and waits until it is over, which the clipboard of the next one tells.
    QStringList capture(Agent &agent)
    {
        agent.requireReady();
        EXPECT_TRUE(agent.activate(u"full-screen"_s));
        EXPECT_TRUE(waitFor([this] { return !capturesIn(pictures).isEmpty(); }));
        return capturesIn(pictures);
    }

    PrivateDesktop desktop;
    PaintedScreen screen;
    QString pictures;
};

struct FormatTest : SavedFileTest, testing::WithParamInterface<const char *> { };

TEST_P(FormatTest, isReadByOtherPrograms)
{
    const auto format = QString::fromLatin1(GetParam());
    configure(pictures, format);
    Agent agent(desktop);
    const auto files = capture(agent);
    ASSERT_THAT(files, testing::SizeIs(1));
    EXPECT_EQ(QFileInfo(files.first()).suffix(), format);
    const QImage seen = pictureIn(desktop, files.first());
    if (format == "jpeg"_L1)
        EXPECT_LT(meanDistance(screen.expected(), seen), 2.0);
    else
        EXPECT_EQ(differingPixels(screen.expected(), seen), 0);
}

INSTANTIATE_TEST_SUITE_P(Formats, FormatTest, testing::Values("png", "jpeg", "tiff"),
                         [](const auto &format) { return std::string(format.param); });

TEST_F(SavedFileTest, aPngPassesTheStrictCheckers)
{
    Agent agent(desktop);
    const auto files = capture(agent);
    const auto checked = desktop.ask({u"pngcheck"_s, u"-q"_s, files.first()});
    EXPECT_EQ(checked.ending, Ending{}) << checked.output.toStdString();
}

TEST_F(SavedFileTest, aTiffPassesTheStrictCheckers)
{
    configure(pictures, u"tiff"_s);
    Agent agent(desktop);
    const auto files = capture(agent);
    const auto checked = desktop.ask({u"tiffinfo"_s, u"-D"_s, files.first()});
    EXPECT_EQ(checked.ending, Ending{});
    EXPECT_TRUE(checked.errors.isEmpty()) << checked.errors.toStdString();
}

TEST_F(SavedFileTest, isNamedAfterTheLocalTime)
{
    desktop.set("TZ", "Asia/Kathmandu"); // a quarter of an hour off every whole one
    Agent agent(desktop);
    const QTimeZone zone("Asia/Kathmandu");
    const auto before = QDateTime::currentDateTime().toTimeZone(zone);
    const auto files = capture(agent);
    const auto after = QDateTime::currentDateTime().toTimeZone(zone);
    auto taken = QDateTime::fromString(QFileInfo(files.first()).fileName(),
                                       u"'Lumacap_'yyyy-MM-dd_HH-mm-ss'.png'"_s);
    ASSERT_TRUE(taken.isValid()) << files.first().toStdString();
    taken.setTimeZone(zone);
    EXPECT_LE(before.addSecs(-1), taken);
    EXPECT_LE(taken, after);
}

TEST_F(SavedFileTest, goesToTheDesktopFolderWhenNoneIsChosen)
{
    writeSettings(desktop, {{u"saveToFile"_s, u"true"_s}});
    pictures = desktop.folder(u"home/Bureau"_s);
    QFile folders(desktop.folder(u"config"_s) + "/user-dirs.dirs"_L1);
    ASSERT_TRUE(folders.open(QIODevice::WriteOnly));
    folders.write("XDG_DESKTOP_DIR=\"$HOME/Bureau\"\n");
    folders.close();
    Agent agent(desktop);
    EXPECT_THAT(capture(agent), testing::SizeIs(1));
}

TEST_F(SavedFileTest, isNotWrittenUnlessAskedFor)
{
    writeSettings(desktop, {{u"saveDirectory"_s, pictures}});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
    EXPECT_TRUE(entriesOf(pictures).isEmpty());
    EXPECT_TRUE(entriesOf(desktop.folder(u"home/Desktop"_s)).isEmpty());
}

TEST_F(SavedFileTest, followsTheSettingsAsTheyAreAtEachCapture)
{
    Agent agent(desktop);
    capture(agent);
    configure(desktop.folder(u"elsewhere"_s), u"tiff"_s);
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    const auto files = [this] { return capturesIn(desktop.folder(u"elsewhere"_s)); };
    ASSERT_TRUE(waitFor([&files] { return files().size() == 1; }));
    EXPECT_EQ(QFileInfo(files().first()).suffix(), u"tiff"_s);
    EXPECT_THAT(capturesIn(pictures), testing::SizeIs(1));
}

TEST_F(SavedFileTest, ofTwoInOneSecondTheLaterStays)
{
    Agent agent(desktop);
    agent.requireReady();
    const auto wasInOneSecond = [&] {
        for (const QString &file : capturesIn(pictures))
            QFile::remove(file);
        ClipboardWatch watch(desktop.server().display());
        EXPECT_TRUE(waitFor([] { return QTime::currentTime().msec() < 300; }));
        for (const std::uint32_t seed : {1U, 2U}) {
            const int before = watch.changes();
            screen.paint(noisePicture({640, 480}, seed));
            EXPECT_TRUE(agent.activate(u"full-screen"_s));
            EXPECT_TRUE(waitFor([&] { return watch.changes() > before; }));
        }
        // The second picture is on the clipboard; its file comes next.
        return waitFor(
            [this] {
                return capturesIn(pictures).size() == 1
                    && differingPixels(screen.expected(),
                                       pictureIn(desktop, capturesIn(pictures)[0]))
                    == 0;
            },
            std::chrono::seconds(3));
    };
    bool seen = false; // a capture may fall into the next second on a busy machine
    for (int attempt = 0; attempt < 10 && !seen; ++attempt)
        seen = wasInOneSecond();
    EXPECT_TRUE(seen);
}

TEST_F(SavedFileTest, aMissingFolderIsNotMadeAndTheClipboardHasThePicture)
{
    const QString missing = pictures + "/gone"_L1;
    configure(missing);
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
    configure(pictures); // the next capture's file tells that the first one is over
    EXPECT_THAT(capture(agent), testing::SizeIs(1));
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_THAT(entriesOf(pictures), testing::SizeIs(1));
}

TEST_F(SavedFileTest, aFileInPlaceOfTheFolderIsLeftAsItIs)
{
    const QString file = pictures + "/file"_L1;
    QFile regular(file);
    ASSERT_TRUE(regular.open(QIODevice::WriteOnly));
    regular.write("mine");
    regular.close();
    configure(file);
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
    configure(pictures);
    EXPECT_THAT(capture(agent), testing::SizeIs(1));
    EXPECT_EQ(fileBytes(file), "mine");
    EXPECT_THAT(entriesOf(pictures), testing::SizeIs(2));
}

TEST_F(SavedFileTest, aReadOnlyDiskGetsNoFileAndTheClipboardHasThePicture)
{
    const QString disk = desktop.folder(u"disk"_s);
    configure(disk);
    Agent agent(desktop, {}, withSmallDisk(disk, 64, Access::ReadOnly));
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
    configure(pictures);
    EXPECT_THAT(capture(agent), testing::SizeIs(1));
    EXPECT_TRUE(entriesOf(seenBy(agent.process().pid(), disk)).isEmpty());
}

TEST_F(SavedFileTest, aFullDiskIsLeftWithoutAPieceOfIt)
{
    screen.paint(noisePicture({640, 480})); // 900 KB however it is written
    const QString disk = desktop.folder(u"disk"_s);
    for (const auto &format : {u"png"_s, u"jpeg"_s, u"tiff"_s}) {
        configure(disk, format);
        Agent agent(desktop, {}, withSmallDisk(disk, 64));
        agent.requireReady();
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_FALSE(clipboardPicture(desktop).isNull());
        for (const QString &file : capturesIn(pictures))
            QFile::remove(file);
        configure(pictures);
        EXPECT_THAT(capture(agent), testing::SizeIs(1)) << format.toStdString();
        EXPECT_TRUE(entriesOf(seenBy(agent.process().pid(), disk)).isEmpty())
            << format.toStdString();
    }
}

TEST_F(SavedFileTest, aFileBeyondTheLimitOfFileSizesIsLeftOut)
{
    screen.paint(noisePicture({640, 480}));
    // The limit, 64 blocks of 512 bytes, holds for the settings and everything else that it writes.
    Agent agent(desktop, {}, {u"sh"_s, u"-c"_s, u"ulimit -f 64 && exec \"$@\""_s, u"sh"_s});
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
    QImage plain({640, 480}, QImage::Format_RGB32);
    plain.fill(Qt::darkCyan);
    screen.paint(
        plain); // the next capture's file, which is small, tells that the first one is over
    const auto files = capture(agent);
    ASSERT_THAT(files, testing::SizeIs(1));
    EXPECT_EQ(differingPixels(screen.expected(), pictureIn(desktop, files.first())), 0);
    EXPECT_THAT(entriesOf(pictures), testing::SizeIs(1));
}

TEST_F(SavedFileTest, aFileReplacedOnAFullDiskStaysWhole)
{
    screen.paint(noisePicture({640, 480}));
    const QString disk = desktop.folder(u"disk"_s);
    configure(disk);
    // Room for one picture and a half: of two in one second the first has to outlive the second.
    Agent agent(desktop, {}, withSmallDisk(disk, 1400));
    agent.requireReady();
    const QString folder = seenBy(agent.process().pid(), disk);
    ClipboardWatch watch(desktop.server().display());
    for (int capture = 0; capture < 6; ++capture) {
        const int before = watch.changes();
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([&] { return watch.changes() > before; }));
    }
    EXPECT_TRUE(waitFor([&folder] { return !capturesIn(folder).isEmpty(); }));
    configure(pictures);
    capture(agent);
    for (const QString &name : entriesOf(folder))
        EXPECT_FALSE(pictureIn(desktop, folder + u'/' + name).isNull()) << name.toStdString();
}

} // namespace
} // namespace lumacap::harness
