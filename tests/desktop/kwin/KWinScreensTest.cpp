#include "harness/Input.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;

std::string arrangement(KWinDesktop &desktop)
{
    const Answer said = desktop.ask({testedProgram(QStringLiteral(LUMACAP_SCREENS_PROBE))});
    EXPECT_EQ(said.ending, Ending{}) << said.errors.toStdString();
    return said.output.toStdString();
}

TEST(KWinScreensTest, thePointerIsFoundOnEachScreen)
{
    KWinDesktop desktop({.size = {960, 600}, .outputs = 2});
    desktop.input().moveTo({100, 50});
    // On a busy machine KWin may answer later than the program waits for it.
    EXPECT_TRUE(waitFor([&] { return arrangement(desktop).starts_with("pointer 100.5 549.5\n"); }));
    desktop.input().moveTo({960 + 300, 0}); // the edge belongs to the screen
    EXPECT_TRUE(
        waitFor([&] { return arrangement(desktop).starts_with("pointer 1260.5 599.5\n"); }));
}

TEST(KWinScreensTest, theMainScreenIsTheOneThatItsPersonPutsFirst)
{
    KWinDesktop desktop({.size = {960, 600}, .outputs = 2});
    EXPECT_THAT(arrangement(desktop), HasSubstr("screen 0 0 960 600 1\nscreen 960 0 960 600 1\n"));
    const std::vector<TestOutput> outputs = desktop.outputs();
    desktop.configure({u"output."_s + outputs[1].name + u".priority.1"_s,
                       u"output."_s + outputs[0].name + u".priority.2"_s});
    // KWin follows a little after it was told.
    const std::string leftOfIt = "screen 0 0 960 600 1\nscreen -960 0 960 600 1\n";
    EXPECT_TRUE(waitFor([&] { return arrangement(desktop).contains(leftOfIt); }));
}

TEST(KWinScreensTest, aScaleIsTheNextWholeFactor)
{
    KWinDesktop desktop({.size = {960, 600}, .scale = 1.5});
    EXPECT_THAT(arrangement(desktop), HasSubstr("screen 0 0 960 600 2\n"));
}

} // namespace
} // namespace lumacap::harness
