#include "SwayAgentFixture.h"
#include "harness/Captures.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr QRect corner{0, 0, 100, 100};

struct ScreencopyTest : SwayAgentFixture {
    /// The first display, as the program writes it into a file.
    QImage firstDisplay()
    {
        const QString path = desktop->folder(u"pictures"_s) + u"/first.png"_s;
        const Answer said = desktop->ask(program({u"full-screen"_s, u"--output"_s, path}));
        EXPECT_EQ(said.ending, Ending{}) << said.errors.toStdString();
        EXPECT_EQ(said.errors, QByteArray());
        return pictureIn(*desktop, path);
    }
};

struct Shown {
    const char *name;
    SwayOutput output;
};

struct ShownOutputTest : ScreencopyTest, testing::WithParamInterface<Shown> { };

TEST_P(ShownOutputTest, isCapturedPixelForPixel)
{
    startDesktop({.outputs = {GetParam().output}});

    EXPECT_EQ(differingOutside(corner, painted[u"HEADLESS-1"_s], firstDisplay()), 0);
}

INSTANTIATE_TEST_SUITE_P(
    At, ShownOutputTest,
    testing::Values(Shown{"Scale1", {}}, Shown{"Scale1And25", {{1000, 750}, 1.25}},
                    Shown{"Scale1And50", {{1500, 900}, 1.5}}, Shown{"Scale2", {{1600, 1000}, 2}},
                    Shown{"FourThousandColumns", {{3840, 2160}, 2}},
                    Shown{"Turned90", {.transform = u"90"_s}},
                    Shown{"Turned180", {.transform = u"180"_s}},
                    Shown{"Turned270AtScale2", {{1600, 1000}, 2, {}, u"270"_s}},
                    Shown{"Flipped", {.transform = u"flipped"_s}},
                    Shown{"FlippedAndTurned90", {.transform = u"flipped-90"_s}}),
    [](const auto &shown) { return shown.param.name; });

TEST_F(ScreencopyTest, thePointerIsInThePicture)
{
    startDesktop();
    const QImage inTheCorner = firstDisplay();
    desktop->input().moveTo({600, 400});

    const QImage inTheMiddle = firstDisplay();

    const QRect middle(550, 350, 100, 100);
    EXPECT_GT(differingPixels(inTheCorner.copy(middle), inTheMiddle.copy(middle)), 0);
    EXPECT_GT(differingPixels(inTheCorner.copy(corner), inTheMiddle.copy(corner)), 0);
    EXPECT_EQ(differingOutside(middle, painted[u"HEADLESS-1"_s], inTheMiddle), 0);
}

TEST_F(ScreencopyTest, takesTheFirstOfSeveralOutputs)
{
    startDesktop({.outputs = {{}, {{800, 600}, 1, {1280, 0}}}});

    EXPECT_EQ(differingOutside(corner, painted[u"HEADLESS-1"_s], firstDisplay()), 0);
}

TEST_F(ScreencopyTest, theAgentSavesTheMainScreen)
{
    startDesktop();
    startAgent();

    ASSERT_TRUE(agent->activate(u"full-screen"_s));

    EXPECT_EQ(differingOutside(corner, painted[u"HEADLESS-1"_s], savedPicture()), 0);
}

} // namespace
} // namespace lumacap::harness
