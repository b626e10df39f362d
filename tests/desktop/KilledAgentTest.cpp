#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

#include <csignal>
#include <iostream>
#include <random>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr int kills = 25;

/// Microseconds from the request after which the agent is killed: all over a capture with its save.
int randomDelay(std::mt19937 &random)
{
    return std::uniform_int_distribution(0, 400'000)(random);
}

struct KilledAgentTest : testing::TestWithParam<const char *> { };

TEST_P(KilledAgentTest, leavesOnlyWholeFiles)
{
    const auto format = QString::fromLatin1(GetParam());
    PrivateDesktop desktop({.server = {.size = {1920, 1080}}});
    const PaintedScreen screen(desktop.server().display(), noisePicture({1920, 1080}));
    const QString pictures = desktop.folder(u"pictures"_s);
    writeSettings(
        desktop,
        {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, pictures}, {u"imageFormat"_s, format}});
    const auto seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    std::mt19937 random(seed);
    for (int kill = 0; kill < kills; ++kill) {
        Agent agent(desktop);
        agent.requireReady();
        agent.activateSoon(u"full-screen"_s);
        const auto moment =
            std::chrono::steady_clock::now() + std::chrono::microseconds(randomDelay(random));
        ASSERT_TRUE(waitFor([moment] { return std::chrono::steady_clock::now() >= moment; }));
        agent.process().send(SIGKILL);
        ASSERT_TRUE(agent.process().waitForEnd(usualLimit));
    }
    for (const QString &name : entriesOf(pictures))
        EXPECT_EQ(pictureIn(desktop, pictures + u'/' + name).size(), QSize(1920, 1080))
            << name.toStdString();
    EXPECT_THAT(entriesOf(pictures), testing::Not(testing::IsEmpty()))
        << "no kill came after a save";
}

INSTANTIATE_TEST_SUITE_P(Formats, KilledAgentTest, testing::Values("png", "jpeg", "tiff"),
                         [](const auto &format) { return std::string(format.param); });

} // namespace
} // namespace lumacap::harness
