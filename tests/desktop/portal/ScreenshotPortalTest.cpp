#include "harness/Captures.h"
#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/SwayDesktop.h"
#include "harness/wayland/WestonDesktop.h"
#include "portal/PortalFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <ostream>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr QSize screenSize{640, 480};

struct ScreenshotPortal : testing::Test {
    ScreenshotPortal() { saveCaptures(desktop); }

    QString pictures() const { return desktop.folder(u"pictures"_s); }

    /// The only capture saved, once it is there; null when none comes.
    QImage savedPicture()
    {
        std::ignore = waitFor([this] { return !capturesIn(pictures()).isEmpty(); });
        const QStringList files = capturesIn(pictures());
        return files.size() == 1 ? pictureIn(desktop, files.first()) : QImage();
    }

    WestonDesktop desktop{{.pixels = screenSize}};
    QImage picture = noisePicture(screenSize);
};

TEST_F(ScreenshotPortal, givesTheWholeScreenAndLeavesNoFile)
{
    startStandInPortal(desktop, picture);
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(picture, savedPicture()), 0);
    EXPECT_THAT(entriesOf(portalFolder(desktop)), testing::IsEmpty());
    EXPECT_EQ(agent.process().output(), QByteArray());
}

TEST_F(ScreenshotPortal, isToldWhichProgramAsks)
{
    const Process &portal = startStandInPortal(desktop, picture);
    const QString file = pictures() + u"/capture.png"_s;
    EXPECT_EQ(desktop.ask(program({u"full-screen"_s, u"--output"_s, file})).ending, Ending{});
    EXPECT_EQ(portal.output(), "ready\nRegister\nScreenshot\n");
}

TEST_F(ScreenshotPortal, servesACaptureIntoAFile)
{
    startStandInPortal(desktop, picture);
    const QString file = pictures() + u"/capture.png"_s;
    const Answer answer = desktop.ask(program({u"full-screen"_s, u"--output"_s, file}));
    EXPECT_EQ(answer.ending, Ending{});
    EXPECT_EQ(answer.errors, QByteArray());
    EXPECT_EQ(differingPixels(picture, pictureIn(desktop, file)), 0);
    EXPECT_THAT(entriesOf(portalFolder(desktop)), testing::IsEmpty());
}

/// A portal's way of not giving a picture, and what the person reads.
struct RefusalCase {
    const char *name;
    QString options;
    const char *reason;
};

std::ostream &operator<<(std::ostream &stream, const RefusalCase &refusal)
{
    return stream << refusal.options.toStdString();
}

struct RefusedScreenshot : ScreenshotPortal, testing::WithParamInterface<RefusalCase> { };

TEST_P(RefusedScreenshot, isOneLineAndTheNextCaptureWorks)
{
    const RefusalCase &refusal = GetParam();
    startStandInPortal(desktop, picture, {u"Screenshot=%1,grants"_s.arg(refusal.options)});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_THAT(linesOf(agent, 1),
                testing::ElementsAre(QByteArray("Capture failed: ") + refusal.reason));
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(picture, savedPicture()), 0);
    EXPECT_EQ(linesOf(agent, 1).size(), 1);
    EXPECT_THAT(entriesOf(portalFolder(desktop)), testing::IsEmpty());
}

TEST_P(RefusedScreenshot, leavesNoFileOfACaptureIntoOne)
{
    const RefusalCase &refusal = GetParam();
    startStandInPortal(desktop, picture, {u"Screenshot="_s + refusal.options});
    const QString file = pictures() + u"/capture.png"_s;
    const Answer answer = desktop.ask(program({u"full-screen"_s, u"--output"_s, file}));
    EXPECT_EQ(answer.ending, (Ending{1, 0}));
    EXPECT_EQ(answer.errors, QByteArray("lumacap: no picture was taken: ") + refusal.reason + '\n');
    EXPECT_THAT(entriesOf(pictures()), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Manners, RefusedScreenshot,
    testing::Values(RefusalCase{"cancelled", u"cancels"_s, "it was cancelled"},
                    RefusalCase{"refused", u"refuses"_s, "the desktop's portal refused"},
                    RefusalCase{"failing", u"fails"_s, "the desktop's portal refused: not for you"},
                    RefusalCase{"namingNonsense", u"names-nonsense"_s,
                                "the desktop's portal answered nonsense"},
                    RefusalCase{"answeringNonsense", u"answers-nonsense"_s,
                                "the desktop's portal answered nonsense"}),
    [](const auto &tested) { return std::string(tested.param.name); });

/// A portal that grants in its own way.
struct GrantingPortal : ScreenshotPortal, testing::WithParamInterface<const char *> { };

TEST_P(GrantingPortal, isUnderstood)
{
    startStandInPortal(desktop, picture, {u"Screenshot="_s + QString::fromLatin1(GetParam())});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(picture, savedPicture()), 0);
    EXPECT_EQ(agent.process().output(), QByteArray());
}

INSTANTIATE_TEST_SUITE_P(Manners, GrantingPortal,
                         testing::Values("answers-elsewhere", "answers-early", "answers-twice"),
                         [](const auto &tested) {
                             return QString::fromLatin1(tested.param).remove(u'-').toStdString();
                         });

TEST_F(ScreenshotPortal, thatNamesRubbishIsNotBelieved)
{
    const QString rubbish = portalFolder(desktop) + u"/rubbish"_s;
    QFile file(rubbish);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no picture") > 0);
    file.close();
    startStandInPortal(desktop, picture, {u"uri=file://"_s + rubbish});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_THAT(linesOf(agent, 1),
                testing::ElementsAre(
                    "Capture failed: the desktop's portal names a file that is no whole picture"));
    EXPECT_TRUE(QFile::exists(rubbish)) << "it was there before";
    EXPECT_TRUE(agent.activatePlainly());
}

TEST_F(ScreenshotPortal, thatGivesAnotherPictureIsNotBelieved)
{
    startStandInPortal(desktop, noisePicture({320, 240}));
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_THAT(linesOf(agent, 1),
                testing::ElementsAre("Capture failed: the desktop's portal gives a picture that is "
                                     "not one of the screens"));
    EXPECT_THAT(entriesOf(portalFolder(desktop)), testing::IsEmpty());
}

TEST_F(ScreenshotPortal, thatNeverAnswersHoldsNothingUp)
{
    Process &portal = startStandInPortal(desktop, picture, {u"Screenshot=keeps-silent"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    ASSERT_TRUE(waitFor([&portal] { return portal.output().contains("Screenshot\n"); }));
    EXPECT_TRUE(agent.activatePlainly());
    EXPECT_EQ(agent.process().output(), QByteArray());
    desktop.stop(portal);
    EXPECT_THAT(linesOf(agent, 1),
                testing::ElementsAre("Capture failed: the desktop's portal has gone"));
}

TEST_F(ScreenshotPortal, mayVanishAndComeBack)
{
    Process &portal = startStandInPortal(desktop, picture, {u"Screenshot=vanishes"_s});
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_THAT(linesOf(agent, 1),
                testing::ElementsAre("Capture failed: the desktop's portal has gone"));
    desktop.stop(portal);
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_THAT(linesOf(agent, 2),
                testing::ElementsAre("Capture failed: the desktop's portal has gone",
                                     "Capture failed: the desktop's portal does not start"));
    startStandInPortal(desktop, picture);
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_EQ(differingPixels(picture, savedPicture()), 0);
}

TEST_F(ScreenshotPortal, takesTwoPicturesOneAfterTheOther)
{
    const Process &portal = startStandInPortal(desktop, picture);
    Agent agent(desktop);
    agent.requireReady();
    agent.activateSoon(u"full-screen"_s);
    agent.activateSoon(u"full-screen"_s);
    ASSERT_TRUE(waitFor([&portal] { return portal.output().count("Screenshot\n") == 2; }));
    EXPECT_TRUE(waitFor([this] { return entriesOf(portalFolder(desktop)).isEmpty(); }));
    ASSERT_TRUE(waitFor([this] { return !capturesIn(pictures()).isEmpty(); }));
    // One file, where both were taken within a second: its name tells no less.
    for (const QString &file : capturesIn(pictures()))
        EXPECT_EQ(differingPixels(picture, pictureIn(desktop, file)), 0);
    EXPECT_EQ(agent.process().output(), QByteArray());
}

TEST_F(ScreenshotPortal, freezesTheScreenForASelection)
{
    startStandInPortal(desktop, picture);
    const QImage before = desktop.look(u"any"_s);
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"selection"_s));
    EXPECT_TRUE(waitFor([&] {
        const qsizetype all = before.width() * qsizetype{before.height()};
        return differingPixels(before, desktop.look(u"any"_s)) > all * 9 / 10;
    }));
    ASSERT_TRUE(agent.activate(u"quit"_s));
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
    EXPECT_EQ(agent.process().output(), QByteArray());
    EXPECT_EQ(agent.process().errors(), QByteArray());
}

/// One picture of a plain display, and of a dense one to its right, in the dense one's pixels.
TEST(ScreenshotPortalOnTwoDisplays, givesTheDisplayThatItIsNotResampledOn)
{
    SwayDesktop desktop({.outputs = {{{600, 400}, 2, {0, 0}}, {{640, 480}, 1, {300, 0}}}});
    desktop.set("LUMACAP_SCREEN_CAPTURE", "portal");
    const QImage picture = noisePicture({1880, 960});
    startStandInPortal(desktop, picture);
    const QString file = desktop.folder(u"pictures"_s) + u"/capture.png"_s;
    const Answer answer = desktop.ask(program({u"full-screen"_s, u"--output"_s, file}));
    ASSERT_EQ(answer.ending, Ending{}) << answer.errors.toStdString();
    EXPECT_EQ(differingPixels(picture.copy(0, 0, 600, 400), pictureIn(desktop, file)), 0);
}

} // namespace
} // namespace lumacap::harness
