#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace lumacap {

/// What the agent can be asked to do from outside.
enum class Command { FullScreen, Selection, Preferences, CheckForUpdates, Quit };

/// Whether this version can carry a command out.
enum class Availability { Available, NotYet };

struct CommandRow {
    Command command;
    /// The word on the command line, and the name of the D-Bus action.
    QLatin1StringView name;
    Availability availability;
};

inline constexpr std::array commands{
    CommandRow{Command::FullScreen, QLatin1StringView("full-screen"), Availability::Available},
    CommandRow{Command::Selection, QLatin1StringView("selection"), Availability::Available},
    CommandRow{Command::Preferences, QLatin1StringView("preferences"), Availability::NotYet},
    CommandRow{Command::CheckForUpdates, QLatin1StringView("check-for-updates"),
               Availability::Available},
    CommandRow{Command::Quit, QLatin1StringView("quit"), Availability::Available},
};

constexpr const CommandRow &row(Command command)
{
    return commands.at(static_cast<std::size_t>(command));
}
static_assert(std::ranges::all_of(commands, [](const CommandRow &entry) {
    return &row(entry.command) == &entry;
}));

/// The command of this name, or nothing.
inline std::optional<Command> commandNamed(QStringView name)
{
    const auto *const found = std::ranges::find_if(
        commands, [name](const CommandRow &entry) { return name == entry.name; });
    return found == commands.end() ? std::nullopt : std::optional(found->command);
}

} // namespace lumacap
