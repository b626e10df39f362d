#pragma once

#include "platform/gnome/Keybindings.h"

#include <QString>

#include <optional>

namespace lumacap::gnome {

/// Keys as GNOME's settings write them: "<Control><Shift>a".
struct Accelerator {
    /// A symbol's name ("a", "Print"), or a hexadecimal X key code ("0x26") for a physical key.
    QString key;
    /// A mask of the modifiers in `carbon`.
    std::uint32_t modifiers = 0;

    friend bool operator==(const Accelerator &, const Accelerator &) = default;
};

/// Nothing for what is no accelerator, for one that is switched off, and for one with a modifier
/// that no shortcut of ours has.
std::optional<Accelerator> parseAccelerator(QStringView text);

/// How the settings write a physical key, which the shell takes for that key in every layout.
QString acceleratorText(const KeyChord &chord);

/// The physical key's evdev code that an accelerator names; nothing where it names a symbol.
std::optional<std::uint32_t> physicalKey(const Accelerator &accelerator);

} // namespace lumacap::gnome
