#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/SmallDisk.h"
#include "harness/WaitFor.h"

#include <QFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <ostream>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds startLimit{20};

struct CommandLineTest : testing::Test {
    Answer lumacap(const QStringList &arguments)
    {
        return desktop.ask(program(arguments), startLimit);
    }

    QString output(const QString &name) { return desktop.folder(u"pictures"_s) + u'/' + name; }

    PrivateDesktop desktop{smallScreen()};
    PaintedScreen screen{desktop.server().display(), noisePicture({640, 480})};
};

/// One line and nothing else.
MATCHER(isOneLine, "")
{
    return arg.endsWith('\n') && arg.count('\n') == 1 && arg.size() > 1;
}

TEST_F(CommandLineTest, helpAndVersionAreAnsweredWithoutADesktop)
{
    desktop.set("DISPLAY", "");
    desktop.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    for (const auto &option : {u"--help"_s, u"--version"_s}) {
        const auto answer = lumacap({option});
        EXPECT_EQ(answer.ending, Ending{});
        EXPECT_TRUE(answer.output.contains("lumacap")) << answer.output.toStdString();
        EXPECT_TRUE(answer.errors.isEmpty()) << answer.errors.toStdString();
    }
}

struct UsageCase {
    const char *name;
    QStringList arguments;
};

std::ostream &operator<<(std::ostream &stream, const UsageCase &usage)
{
    return stream << usage.arguments.join(u' ').toStdString();
}

struct BadUsageTest : CommandLineTest, testing::WithParamInterface<UsageCase> { };

TEST_P(BadUsageTest, isToldInOneLineWithExitCodeTwo)
{
    const auto answer = lumacap(GetParam().arguments);
    EXPECT_EQ(answer.ending, Ending{.code = 2});
    EXPECT_THAT(answer.errors, isOneLine()) << answer.errors.toStdString();
    EXPECT_TRUE(answer.output.isEmpty()) << answer.output.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Usage, BadUsageTest,
    testing::Values(UsageCase{"unknownCommand", {u"fullscreen"_s}},
                    UsageCase{"unknownOption", {u"--quick"_s}},
                    UsageCase{"twoCommands", {u"full-screen"_s, u"quit"_s}},
                    UsageCase{"outputWithoutAName", {u"full-screen"_s, u"--output"_s}},
                    UsageCase{"outputOfAnotherCommand",
                              {u"quit"_s, u"--output"_s, u"/tmp/a.png"_s}},
                    UsageCase{"outputWithoutACommand", {u"--output"_s, u"/tmp/a.png"_s}},
                    UsageCase{"unknownSuffix", {u"full-screen"_s, u"--output"_s, u"/tmp/a.gif"_s}},
                    UsageCase{"noSuffix", {u"full-screen"_s, u"--output"_s, u"/tmp/png"_s}}),
    [](const auto &usage) { return usage.param.name; });

TEST_F(CommandLineTest, anArgumentThatIsNotUtf8IsBadUsage)
{
    for (const auto &words : {u"full-screen --output \"/tmp/a-$bad.png\""_s, u"\"$bad\""_s}) {
        const QString shell = u"bad=$(printf '\\377'); exec \"$0\" "_s + words;
        const auto answer = desktop.ask({u"sh"_s, u"-c"_s, shell, program().first()});
        EXPECT_EQ(answer.ending, Ending{.code = 2});
        EXPECT_THAT(answer.errors, isOneLine()) << answer.errors.toStdString();
        EXPECT_TRUE(answer.output.isEmpty());
    }
}

TEST_F(CommandLineTest, aLineFeedInAnArgumentLeavesTheErrorOneLine)
{
    const auto unknown = lumacap({u"full\nscreen\n"_s});
    EXPECT_EQ(unknown.ending, Ending{.code = 2});
    EXPECT_THAT(unknown.errors, isOneLine()) << unknown.errors.toStdString();
    const auto unwritable = lumacap({u"full-screen"_s, u"--output"_s, output(u"a\nb/c\nd.png"_s)});
    EXPECT_EQ(unwritable.ending, Ending{.code = 1});
    EXPECT_THAT(unwritable.errors, isOneLine()) << unwritable.errors.toStdString();
}

struct SuffixTest : CommandLineTest, testing::WithParamInterface<const char *> { };

TEST_P(SuffixTest, tellsTheFormatOfTheFile)
{
    screen.paint(photographPicture({640, 480}));
    const QString file = output(u"a."_s + QString::fromLatin1(GetParam()));
    const auto answer = lumacap({u"full-screen"_s, u"--output"_s, file});
    EXPECT_EQ(answer.ending, Ending{}) << answer.errors.toStdString();
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_TRUE(answer.errors.isEmpty()) << answer.errors.toStdString();
    EXPECT_LT(meanDistance(screen.expected(), pictureIn(desktop, file)), 2.0);
    EXPECT_EQ(desktop.selectionOwner("CLIPBOARD"), 0U);
    EXPECT_THAT(entriesOf(desktop.folder(u"pictures"_s)), testing::SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Suffixes, SuffixTest,
                         testing::Values("png", "jpg", "jpeg", "tif", "tiff", "PNG", "Jpeg", "TIF"),
                         [](const auto &suffix) { return std::string(suffix.param); });

TEST_F(CommandLineTest, outputWorksBesideAnAgentAndWithoutABus)
{
    Agent agent(desktop);
    agent.requireReady();
    EXPECT_EQ(lumacap({u"full-screen"_s, u"--output"_s, output(u"a.png"_s)}).ending, Ending{});
    EXPECT_EQ(desktop.selectionOwner("CLIPBOARD"), 0U);
    desktop.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    EXPECT_EQ(lumacap({u"full-screen"_s, u"--output"_s, output(u"b.png"_s)}).ending, Ending{});
    for (const auto &name : {u"a.png"_s, u"b.png"_s})
        EXPECT_EQ(differingPixels(screen.expected(), pictureIn(desktop, output(name))), 0);
}

TEST_F(CommandLineTest, outputReplacesAFile)
{
    const auto first = screen.expected();
    ASSERT_EQ(lumacap({u"full-screen"_s, u"--output"_s, output(u"a.png"_s)}).ending, Ending{});
    screen.paint(noisePicture({640, 480}, 2));
    ASSERT_EQ(lumacap({u"full-screen"_s, u"--output"_s, output(u"a.png"_s)}).ending, Ending{});
    EXPECT_EQ(differingPixels(screen.expected(), pictureIn(desktop, output(u"a.png"_s))), 0);
    EXPECT_THAT(entriesOf(desktop.folder(u"pictures"_s)), testing::SizeIs(1));
}

TEST_F(CommandLineTest, outputThatCannotBeWrittenLeavesNothing)
{
    const auto answer = lumacap({u"full-screen"_s, u"--output"_s, output(u"gone/a.png"_s)});
    EXPECT_EQ(answer.ending, Ending{.code = 1});
    EXPECT_THAT(answer.errors, isOneLine()) << answer.errors.toStdString();
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_TRUE(entriesOf(desktop.folder(u"pictures"_s)).isEmpty());
}

TEST_F(CommandLineTest, outputOnAFullDiskLeavesTheFileThatWasThere)
{
    const QString disk = desktop.folder(u"disk"_s);
    const QString check =
        u"echo old > \"$1\"; shift; \"$@\"; code=$?; ls -A \"$0\"; cat \"$0\"/a.png; exit $code"_s;
    const QString file = disk + "/a.png"_L1;
    const auto answer =
        desktop.ask(withSmallDisk(disk, 64) + QStringList{u"sh"_s, u"-c"_s, check, disk, file}
                    + program({u"full-screen"_s, u"--output"_s, file}));
    EXPECT_EQ(answer.ending, Ending{.code = 1});
    EXPECT_THAT(answer.errors, isOneLine()) << answer.errors.toStdString();
    EXPECT_EQ(answer.output, "a.png\nold\n");
}

TEST_F(CommandLineTest, outputBeyondTheLimitOfFileSizesLeavesNothing)
{
    // Noise does not fit into 64 blocks of 512 bytes.
    const auto answer =
        desktop.ask(QStringList{u"sh"_s, u"-c"_s, u"ulimit -f 64 && exec \"$@\""_s, u"sh"_s}
                    + program({u"full-screen"_s, u"--output"_s, output(u"a.png"_s)}));
    EXPECT_EQ(answer.ending, Ending{.code = 1});
    EXPECT_THAT(answer.errors, isOneLine()) << answer.errors.toStdString();
    EXPECT_TRUE(entriesOf(desktop.folder(u"pictures"_s)).isEmpty());
}

TEST_F(CommandLineTest, outputWithoutADisplayFailsInOneLine)
{
    desktop.set("DISPLAY", ":9999");
    const auto answer = lumacap({u"full-screen"_s, u"--output"_s, output(u"a.png"_s)});
    EXPECT_EQ(answer.ending, Ending{.code = 1});
    EXPECT_THAT(answer.errors, isOneLine()) << answer.errors.toStdString();
    EXPECT_TRUE(entriesOf(desktop.folder(u"pictures"_s)).isEmpty());
}

TEST_F(CommandLineTest, aCaptureIsHandedToTheRunningAgent)
{
    Agent agent(desktop);
    agent.requireReady();
    const auto answer = lumacap({u"full-screen"_s});
    EXPECT_EQ(answer.ending, Ending{});
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
}

TEST_F(CommandLineTest, aCaptureWithoutAnAgentBecomesTheAgent)
{
    Agent agent(desktop, {u"full-screen"_s});
    agent.requireReady();
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
    EXPECT_FALSE(agent.process().ending());
}

TEST_F(CommandLineTest, aSecondPlainStartDoesNothing)
{
    Agent agent(desktop);
    agent.requireReady();
    const auto answer = lumacap({});
    EXPECT_EQ(answer.ending, Ending{});
    EXPECT_TRUE(answer.errors.isEmpty()) << answer.errors.toStdString();
    EXPECT_TRUE(agent.activatePlainly());
    agent.requireReady();
    EXPECT_EQ(desktop.selectionOwner("CLIPBOARD"), 0U);
}

TEST_F(CommandLineTest, ofManyAgentsStartedAtOnceOneStays)
{
    std::vector<Process *> starts(6);
    for (Process *&start : starts)
        start = &desktop.start(u"start"_s, program());
    const auto running = [&starts] {
        return std::ranges::count_if(starts, [](Process *start) { return !start->ending(); });
    };
    EXPECT_TRUE(waitFor([&running] { return running() == 1; }));
    for (const Process *start : starts) {
        const auto end = start->ending();
        EXPECT_EQ(end.value_or(Ending{}), Ending{}) << start->errors().toStdString();
    }
    EXPECT_EQ(lumacap({u"full-screen"_s}).ending, Ending{});
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
    EXPECT_EQ(running(), 1);
}

TEST_F(CommandLineTest, quitEndsTheRunningAgent)
{
    Agent agent(desktop);
    agent.requireReady();
    EXPECT_EQ(lumacap({u"quit"_s}).ending, Ending{});
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
}

TEST_F(CommandLineTest, quitWithoutAnAgentHasNothingToDo)
{
    const auto answer = lumacap({u"quit"_s});
    EXPECT_EQ(answer.ending, Ending{});
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_TRUE(answer.errors.isEmpty()) << answer.errors.toStdString();
}

TEST_F(CommandLineTest, anActionWhoseCallerWantsNoAnswerIsCarriedOut)
{
    Agent agent(desktop);
    agent.requireReady();
    agent.activateSoon(u"no-such-action"_s);
    agent.activateSoon(u"full-screen"_s);
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
}

TEST_F(CommandLineTest, anUnknownActionLeavesTheAgentAlive)
{
    Agent agent(desktop);
    agent.requireReady();
    EXPECT_FALSE(agent.activate(u"no-such-action"_s));
    ASSERT_TRUE(agent.activate(u"full-screen"_s));
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
}

} // namespace
} // namespace lumacap::harness
