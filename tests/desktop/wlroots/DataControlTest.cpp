#include "SwayAgentFixture.h"
#include "harness/Captures.h"
#include "harness/WaitFor.h"

#include <QFileInfo>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct DataControlTest : SwayAgentFixture {
    void capture(const SwayOptions &options = {})
    {
        startDesktop(options);
        startAgent();
        ASSERT_TRUE(agent->activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([this] {
            types = desktop->clipboardTypes();
            return types.contains("image/png");
        }));
    }
    /// The clipboard's picture, once a reader has it whole in a file.
    QImage pictureReadBy(const Process &reader, const QString &path)
    {
        return reader.waitForEnd(usualLimit) == Ending{} ? pictureIn(*desktop, path) : QImage();
    }
    Process &shell(const QString &script)
    {
        return desktop->start(u"reader"_s, {u"sh"_s, u"-c"_s, script});
    }
    QString path(const QString &name) const { return desktop->folder(u"home"_s) + u'/' + name; }

    /// What the clipboard offered when the capture was there.
    QList<QByteArray> types;
};

TEST_F(DataControlTest, offersThePictureInEveryTypeWithoutAWindow)
{
    capture();
    const QByteArray png = desktop->clipboardBytes("image/png", usualLimit);

    const QImage fromPng = readImage(*desktop, png, ImageKind::Png);

    EXPECT_EQ(differingPixels(savedPicture(), fromPng), 0);
    EXPECT_EQ(types.first(), "image/png");
    for (const QByteArray &type : types)
        EXPECT_FALSE(desktop->clipboardBytes(type.constData(), usualLimit).isEmpty())
            << type.toStdString();
}

TEST_F(DataControlTest, aReaderThatAsksForAnythingElseGetsNothing)
{
    capture();

    EXPECT_EQ(desktop->clipboardBytes("text/plain", usualLimit), QByteArray());
    EXPECT_TRUE(waitFor([this] { return desktop->clipboardTypes() == types; }));
}

TEST_F(DataControlTest, servesAReaderThatRestsAndAnotherOneMeanwhile)
{
    capture({.outputs = {{{3840, 2160}}}}); // noise: about 25 million bytes
    const QString slowly = path(u"slowly.png"_s);
    const QString go = path(u"go"_s);
    const Process &slow =
        shell(u"wl-paste --no-newline --type image/png | { head --bytes=100000 > %1;"
              " until test -e %2; do sleep 0.05; done; cat >> %1; }"_s.arg(slowly, go));
    ASSERT_TRUE(waitFor([&] { return QFileInfo(slowly).size() == 100000; }));

    const QImage second =
        readImage(*desktop, desktop->clipboardBytes("image/png", usualLimit), ImageKind::Png);
    ASSERT_TRUE(agent->activate(u"preferences"_s)); // it answers meanwhile
    desktop->start(u"go"_s, {u"touch"_s, go});

    const QImage saved = savedPicture();
    EXPECT_EQ(differingPixels(saved, second), 0);
    EXPECT_EQ(differingPixels(saved, pictureReadBy(slow, slowly)), 0);
}

TEST_F(DataControlTest, aReaderThatGoesHarmsNobody)
{
    capture({.outputs = {{{3840, 2160}}}});
    const Process &early =
        shell(u"wl-paste --no-newline --type image/png | head --bytes=1000 > /dev/null"_s);
    ASSERT_TRUE(early.waitForEnd(usualLimit).has_value());

    const QImage next =
        readImage(*desktop, desktop->clipboardBytes("image/png", usualLimit), ImageKind::Png);

    EXPECT_EQ(differingPixels(savedPicture(), next), 0);
    EXPECT_EQ(agent->process().ending(), std::nullopt);
}

TEST_F(DataControlTest, othersTakeTheClipboardOverAndItTakesItBack)
{
    capture();
    desktop->start(u"copy"_s,
                   {u"wl-copy"_s, u"--foreground"_s, u"--type"_s, u"text/plain"_s, u"words"_s});
    ASSERT_TRUE(
        waitFor([this] { return desktop->clipboardBytes("text/plain", usualLimit) == "words"; }));

    ASSERT_TRUE(agent->activate(u"full-screen"_s));

    EXPECT_TRUE(waitFor([this] { return desktop->clipboardTypes().contains("image/png"); }));
}

TEST_F(DataControlTest, aReaderUnderWayHasItAllBeforeTheAgentEnds)
{
    capture({.outputs = {{{3840, 2160}}}});
    const QString slowly = path(u"slowly.png"_s);
    const QString go = path(u"go"_s);
    const Process &slow =
        shell(u"wl-paste --no-newline --type image/png | { head --bytes=100000 > %1;"
              " until test -e %2; do sleep 0.05; done; cat >> %1; }"_s.arg(slowly, go));
    ASSERT_TRUE(waitFor([&] { return QFileInfo(slowly).size() == 100000; }));

    ASSERT_TRUE(agent->activate(u"quit"_s));
    desktop->start(u"go"_s, {u"touch"_s, go});

    EXPECT_EQ(differingPixels(savedPicture(), pictureReadBy(slow, slowly)), 0);
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), Ending{});
}

TEST_F(DataControlTest, aReaderThatStopsDoesNotKeepTheAgentFromEnding)
{
    capture({.outputs = {{{3840, 2160}}}});
    const QString slowly = path(u"slowly.png"_s);
    shell(
        u"wl-paste --no-newline --type image/png | { head --bytes=100000 > %1; sleep 1000; }"_s.arg(
            slowly));
    ASSERT_TRUE(waitFor([&] { return QFileInfo(slowly).size() == 100000; }));

    ASSERT_TRUE(agent->activate(u"quit"_s));

    EXPECT_EQ(agent->process().waitForEnd(usualLimit), Ending{});
}

TEST_F(DataControlTest, aManagerThatFollowsTheClipboardHasThePictureWhenTheAgentEndsAtOnce)
{
    startDesktop();
    const QString kept = path(u"kept.png"_s);
    desktop->start(u"manager"_s,
                   {u"wl-paste"_s, u"--type"_s, u"image/png"_s, u"--watch"_s, u"sh"_s, u"-c"_s,
                    u"cat > %1.part && mv %1.part %1"_s.arg(kept)});
    startAgent();

    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    ASSERT_TRUE(agent->activate(u"quit"_s));
    ASSERT_EQ(agent->process().waitForEnd(usualLimit), Ending{});

    ASSERT_TRUE(waitFor([&] { return QFileInfo::exists(kept); }));
    EXPECT_EQ(differingPixels(savedPicture(), pictureIn(*desktop, kept)), 0);
}

} // namespace
} // namespace lumacap::harness
