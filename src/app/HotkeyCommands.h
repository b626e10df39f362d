#pragma once

#include "app/Command.h"

#include <array>
#include <cstdint>

namespace lumacap {

/// The numbers of the shortcuts.
namespace hotkey {
inline constexpr std::uint32_t fullScreen = 1;
inline constexpr std::uint32_t selection = 2;
} // namespace hotkey

/// What a shortcut does.
struct HotkeyCommandRow {
    std::uint32_t id;
    Command command;
    /// As the menu calls it, for lists of shortcuts outside the program.
    QLatin1StringView title;
};

inline constexpr std::array hotkeyCommands{
    HotkeyCommandRow{hotkey::fullScreen, Command::FullScreen,
                     QLatin1StringView("Capture plein ecran")},
    HotkeyCommandRow{hotkey::selection, Command::Selection, QLatin1StringView("Capture selection")},
};

} // namespace lumacap
