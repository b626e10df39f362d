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

struct CommandRow {
    Command command;
    /// The word on the command line, and the name of the D-Bus action.
    QLatin1StringView name;
};

inline constexpr std::array commands{
    CommandRow{Command::FullScreen, QLatin1StringView("full-screen")},
    CommandRow{Command::Selection, QLatin1StringView("selection")},
    CommandRow{Command::Preferences, QLatin1StringView("preferences")},
    CommandRow{Command::CheckForUpdates, QLatin1StringView("check-for-updates")},
    CommandRow{Command::Quit, QLatin1StringView("quit")},
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
