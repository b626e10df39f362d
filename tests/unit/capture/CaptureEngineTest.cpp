#include "capture/CaptureEngine.h"

#include "capture/ImageSaver.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeScreenCapture.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSoundPlayer.h"
#include "platform/Spawn.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QTest>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace lumacap {

namespace {

constexpr DisplayId first{7};
constexpr DisplayId second{9};

struct CaptureEngineTest : testing::Test {
    QStringList journal;
    FakeDefaultsStore defaults;
    FakeLoginItem loginItem;
    PreferencesStorage preferences{defaults, loginItem};
    FakePasteboard pasteboard{journal};
    FakeSoundPlayer soundPlayer{journal};
    ImageSaver imageSaver{pasteboard, soundPlayer, preferences};
    FakeScreenCapture screenCapture;
    FakeScreens screens;
    CaptureEngine engine{screenCapture, screens, imageSaver};

    CaptureEngineTest()
    {
        screenCapture.listed = std::vector{DisplayInfo{first, 40, 30}, DisplayInfo{second, 20, 10}};
        screens.all = {Screen{first, {{0, 0}, {40, 30}}, 1},
                       Screen{second, {{40, 0}, {20, 10}}, 3}};
    }

    std::string printedBy(auto &&operation)
    {
        testing::internal::CaptureStdout();
        operation();
        return testing::internal::GetCapturedStdout();
    }
    std::string printedByFullScreenCapture()
    {
        return printedBy([this] { QCoro::waitFor(engine.captureFullScreen()); });
    }
};

using CaptureEngineDeathTest = CaptureEngineTest;

} // namespace

TEST_F(CaptureEngineTest, takesTheFirstDisplayWhereverThePointerIs)
{
    QCoro::waitFor(engine.captureFullScreen());

    EXPECT_THAT(screenCapture.requests,
                ElementsAre(FakeScreenCapture::Request{first, QSize(40, 30)}));
}

TEST_F(CaptureEngineTest, givesTheFullScreenPictureToTheSaver)
{
    EXPECT_EQ(printedByFullScreenCapture(), "");

    EXPECT_THAT(journal, ElementsAre(u"clear"_s, u"write"_s, u"sound"_s));
}

TEST_F(CaptureEngineTest, takesTwiceThePointsOnAMainScreenOfFactorTwo)
{
    screens.all.front().backingScaleFactor = 2;

    QCoro::waitFor(engine.captureFullScreen());

    EXPECT_EQ(screenCapture.requests.front().pixelSize, QSize(80, 60));
}

TEST_F(CaptureEngineTest, usesTheMainScreensFactorForTheFirstDisplayEvenIfAnotherScreenHasAnother)
{
    screens.all = {Screen{second, {}, 3}, Screen{first, {}, 1}};

    QCoro::waitFor(engine.captureFullScreen());

    EXPECT_THAT(screenCapture.requests,
                ElementsAre(FakeScreenCapture::Request{first, QSize(120, 90)}));
}

TEST_F(CaptureEngineTest, usesTheFactorTwoWithoutAnyScreen)
{
    screens.all.clear();

    QCoro::waitFor(engine.captureFullScreen());

    EXPECT_EQ(screenCapture.requests.front().pixelSize, QSize(80, 60));
}

TEST_F(CaptureEngineTest, cutsAFactorToItsWholePart)
{
    screens.all.front().backingScaleFactor = 2.75;

    QCoro::waitFor(engine.captureFullScreen());

    EXPECT_EQ(screenCapture.requests.front().pixelSize, QSize(80, 60));
}

TEST_F(CaptureEngineTest, saysWhyTheDisplaysCannotBeListedAndSavesNothing)
{
    screenCapture.listed = failure(u"the desktop refused"_s);

    EXPECT_EQ(printedByFullScreenCapture(), "Capture failed: the desktop refused\n");
    EXPECT_THAT(journal, IsEmpty()) << "no clipboard, no sound";
}

TEST_F(CaptureEngineTest, saysWhyThePictureCannotBeTakenAndSavesNothing)
{
    screenCapture.refusal = Failure{u"the display has been unplugged"_s};

    EXPECT_EQ(printedByFullScreenCapture(), "Capture failed: the display has been unplugged\n");
    EXPECT_THAT(journal, IsEmpty());
}

TEST_F(CaptureEngineTest, doesNothingAndSaysNothingWithoutDisplays)
{
    screenCapture.listed = std::vector<DisplayInfo>();

    EXPECT_EQ(printedByFullScreenCapture(), "");
    EXPECT_THAT(screenCapture.requests, IsEmpty());
    EXPECT_THAT(journal, IsEmpty());
}

TEST_F(CaptureEngineTest, takesTwoPicturesForTwoRequestsAtOnce)
{
    spawn(engine.captureFullScreen());
    spawn(engine.captureFullScreen());

    EXPECT_TRUE(QTest::qWaitFor([this] { return journal.count(u"sound"_s) == 2; }));
    EXPECT_EQ(screenCapture.requests.size(), 2U);
}

TEST_F(CaptureEngineTest, freezesTheDisplayOfTheGivenScreenWithThatScreensFactor)
{
    const auto image = QCoro::waitFor(engine.captureFreezeImage(screens.all.at(1)));

    EXPECT_EQ(image.value_or(QImage()).size(), QSize(60, 30));
    EXPECT_THAT(screenCapture.requests,
                ElementsAre(FakeScreenCapture::Request{second, QSize(60, 30)}));
    EXPECT_THAT(journal, IsEmpty()) << "the caller has the picture, the saver does not";
}

TEST_F(CaptureEngineTest, freezesTheFirstDisplayForAScreenThatMatchesNone)
{
    const auto image = QCoro::waitFor(engine.captureFreezeImage(Screen{DisplayId{1234}, {}, 1}));

    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(screenCapture.requests.front().display, first);
}

TEST_F(CaptureEngineTest, freezesTheFirstDisplayForAScreenWithoutANumber)
{
    QCoro::waitFor(engine.captureFreezeImage(Screen{std::nullopt, {}, 2}));

    EXPECT_THAT(screenCapture.requests,
                ElementsAre(FakeScreenCapture::Request{first, QSize(80, 60)}));
}

TEST_F(CaptureEngineTest, freezesNothingAndSaysNothingWithoutDisplays)
{
    screenCapture.listed = std::vector<DisplayInfo>();

    const auto printed = printedBy([this] {
        EXPECT_EQ(QCoro::waitFor(engine.captureFreezeImage(screens.all.front())), std::nullopt);
    });

    EXPECT_EQ(printed, "");
}

TEST_F(CaptureEngineTest, saysWhyAScreenCannotBeFrozen)
{
    screenCapture.refusal = Failure{u"no"_s};
    const auto freeze = [this] {
        EXPECT_EQ(QCoro::waitFor(engine.captureFreezeImage(screens.all.front())), std::nullopt);
    };
    EXPECT_EQ(printedBy(freeze), "Freeze capture failed: no\n");

    screenCapture.listed = failure(u"not even a list"_s);
    EXPECT_EQ(printedBy(freeze), "Freeze capture failed: not even a list\n");
}

TEST_F(CaptureEngineDeathTest, stopsAtAFactorThatIsNoNumber)
{
    screens.all.front().backingScaleFactor = std::nan("");
    EXPECT_DEATH(QCoro::waitFor(engine.captureFullScreen()), "backing factor");

    screens.all.front().backingScaleFactor = std::numeric_limits<double>::infinity();
    EXPECT_DEATH(QCoro::waitFor(engine.captureFreezeImage(screens.all.front())), "backing factor");
}

TEST_F(CaptureEngineDeathTest, stopsAtASizeThatOverflows)
{
    screenCapture.listed = std::vector{DisplayInfo{first, 2e9, 30}};
    screens.all.front().backingScaleFactor = 2;
    EXPECT_DEATH(QCoro::waitFor(engine.captureFullScreen()), "too large");
}

} // namespace lumacap
