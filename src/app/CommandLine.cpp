#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

const QString helpText = uR"(Usage: lumacap [command]

Without a command the agent is started: an item in the tray, whose menu takes captures.

Commands, carried out by the running agent, or by this process, which becomes the agent:
  full-screen    capture the first display
  selection      pick a window or drag out an area, and capture that
  preferences    open the preferences window
  quit           end the agent

  full-screen --output FILE
                 capture the first display into FILE, without an agent; the suffix says the
                 format: png, jpg, jpeg, tif or tiff

Options:
  -o, --output FILE    the file for full-screen
  -h, --help           this text
  -v, --version        the version
)"_s;

struct SuffixRow {
    QLatin1StringView suffix;
    ImageFormat format;
};

constexpr std::array suffixes{
    SuffixRow{"png"_L1, ImageFormat::Png},   SuffixRow{"jpg"_L1, ImageFormat::Jpeg},
    SuffixRow{"jpeg"_L1, ImageFormat::Jpeg}, SuffixRow{"tif"_L1, ImageFormat::Tiff},
    SuffixRow{"tiff"_L1, ImageFormat::Tiff},
};

CommandLine captureToFile(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    for (const SuffixRow &row : suffixes) {
        if (suffix == row.suffix)
            return CaptureToFile{path, row.format};
    }
    return BadUsage{u"the name of the output file must end in .png, .jpg, .jpeg, .tif or .tiff"_s};
}

CommandLine agentCommand(const QStringList &words)
{
    if (words.isEmpty())
        return RunAgent{};
    const auto command = commandNamed(words.first());
    if (!command || command == Command::CheckForUpdates) // the desktop's action, no word to type
        return BadUsage{u"unknown command '%1'"_s.arg(words.first())};
    return RunAgent{command};
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    const QCommandLineOption help(QStringList{u"h"_s, u"help"_s});
    const QCommandLineOption version(QStringList{u"v"_s, u"version"_s});
    const QCommandLineOption output(QStringList{u"o"_s, u"output"_s}, QString(), u"FILE"_s);
    QCommandLineParser parser;
    parser.addOptions({help, version, output});
    if (!parser.parse(arguments))
        return BadUsage{parser.errorText()};
    if (parser.isSet(help))
        return PrintText{helpText};
    if (parser.isSet(version))
        return PrintText{u"lumacap "_s + QStringLiteral(LUMACAP_VERSION) + u'\n'};
    const QStringList words = parser.positionalArguments();
    if (words.size() > 1)
        return BadUsage{u"more than one command"_s};
    if (!parser.isSet(output))
        return agentCommand(words);
    if (words != QStringList{QString(row(Command::FullScreen).name)})
        return BadUsage{u"--output belongs to full-screen"_s};
    return captureToFile(parser.value(output));
}

} // namespace lumacap
