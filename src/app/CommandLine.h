#pragma once

#include "app/Command.h"
#include "preferences/storage/ImageFormat.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace lumacap {

/// Print this on standard output and end well.
struct PrintText {
    QString text;
};

/// The words made no sense: print this line on standard error and end with status 2.
struct BadUsage {
    QString reason;
};

/// Take one picture of the first display into this file, without an agent.
struct CaptureToFile {
    QString path;
    ImageFormat format = ImageFormat::Png;
};

/// Become the agent, unless one runs, and carry out the command, if there is one.
struct RunAgent {
    std::optional<Command> command;
};

using CommandLine = std::variant<PrintText, BadUsage, CaptureToFile, RunAgent>;

/// What the process was started for. `arguments` begins with the program's name.
CommandLine parseCommandLine(const QStringList &arguments);

} // namespace lumacap
