#include "app/CommandLine.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

CommandLine parsed(const QStringList &words)
{
    return parseCommandLine(QStringList{u"lumacap"_s} + words);
}

bool isBadUsage(const QStringList &words)
{
    const CommandLine commandLine = parsed(words);
    const auto *const usage = std::get_if<BadUsage>(&commandLine);
    return usage != nullptr && !usage->reason.isEmpty() && !usage->reason.contains(u'\n');
}

} // namespace

TEST(CommandLine, startsTheAgentWithoutWords)
{
    const CommandLine commandLine = parsed({});

    ASSERT_TRUE(std::holds_alternative<RunAgent>(commandLine));
    EXPECT_EQ(std::get<RunAgent>(commandLine).command, std::nullopt);
}

TEST(CommandLine, namesACommandOfTheAgent)
{
    for (const Command command :
         {Command::FullScreen, Command::Selection, Command::Preferences, Command::Quit}) {
        const CommandLine commandLine = parsed({QString(row(command).name)});
        ASSERT_TRUE(std::holds_alternative<RunAgent>(commandLine));
        EXPECT_EQ(std::get<RunAgent>(commandLine).command, command);
    }
}

TEST(CommandLine, takesTheFormatOfAFileFromItsSuffixInAnyCase)
{
    const std::pair<QString, ImageFormat> files[]{
        {u"a.png"_s, ImageFormat::Png},     {u"a.PNG"_s, ImageFormat::Png},
        {u"a.jpg"_s, ImageFormat::Jpeg},    {u"/tmp/b c.JPeG"_s, ImageFormat::Jpeg},
        {u"../x.tif"_s, ImageFormat::Tiff}, {u"a.b.tiff"_s, ImageFormat::Tiff},
    };
    for (const auto &[path, format] : files) {
        const CommandLine commandLine = parsed({u"full-screen"_s, u"--output"_s, path});
        ASSERT_TRUE(std::holds_alternative<CaptureToFile>(commandLine)) << path.toStdString();
        EXPECT_EQ(std::get<CaptureToFile>(commandLine).path, path);
        EXPECT_EQ(std::get<CaptureToFile>(commandLine).format, format) << path.toStdString();
    }
}

TEST(CommandLine, takesTheOutputBeforeTheCommandAndWithAnEqualsSign)
{
    EXPECT_TRUE(
        std::holds_alternative<CaptureToFile>(parsed({u"--output=x.png"_s, u"full-screen"_s})));
    EXPECT_TRUE(
        std::holds_alternative<CaptureToFile>(parsed({u"full-screen"_s, u"-o"_s, u"x.png"_s})));
}

TEST(CommandLine, refusesWhatItDoesNotUnderstandInOneLine)
{
    EXPECT_TRUE(isBadUsage({u"fullscreen"_s}));
    EXPECT_TRUE(isBadUsage({u"--frobnicate"_s}));
    EXPECT_TRUE(isBadUsage({u"full-screen"_s, u"selection"_s}));
    EXPECT_TRUE(isBadUsage({u"full-screen"_s, u"--output"_s}));
    EXPECT_TRUE(isBadUsage({u"full-screen"_s, u"--output"_s, u"x.gif"_s}));
    EXPECT_TRUE(isBadUsage({u"full-screen"_s, u"--output"_s, u"png"_s}));
    EXPECT_TRUE(isBadUsage({u"full-screen"_s, u"--output"_s, u""_s}));
    EXPECT_TRUE(isBadUsage({u"selection"_s, u"--output"_s, u"x.png"_s}));
    EXPECT_TRUE(isBadUsage({u"--output"_s, u"x.png"_s}));
    EXPECT_TRUE(isBadUsage({u"check-for-updates"_s}));
    EXPECT_TRUE(isBadUsage({u""_s}));
}

TEST(CommandLine, saysItsVersionAndHowItIsUsed)
{
    const CommandLine version = parsed({u"--version"_s});
    ASSERT_TRUE(std::holds_alternative<PrintText>(version));
    EXPECT_TRUE(std::get<PrintText>(version).text.startsWith(u"lumacap "));

    const CommandLine help = parsed({u"--help"_s});
    ASSERT_TRUE(std::holds_alternative<PrintText>(help));
    for (const QString &word :
         {u"full-screen"_s, u"selection"_s, u"preferences"_s, u"quit"_s, u"--output"_s})
        EXPECT_TRUE(std::get<PrintText>(help).text.contains(word)) << word.toStdString();
}

} // namespace lumacap
