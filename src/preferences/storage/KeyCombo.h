#pragma once

#include "platform/CarbonModifiers.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace lumacap {

/// A shortcut: a physical key and the modifiers held with it.
struct KeyCombo {
    /// macOS virtual key code: the key's place on the keyboard, whatever the layout.
    std::uint32_t keyCode = 0;
    /// A mask of the bits in `carbon`.
    std::uint32_t modifiers = 0;

    /// The modifiers' glyphs (control, option, shift, command, in this order) and the key's label.
    QString displayString() const;

    /// The label of a key; "Key" and the code in decimal where the table of labels has none.
    static QString keyCodeToString(std::uint32_t keyCode);

    /// The Carbon mask of the modifier flags a key event carries; flags that are no modifier of a
    /// shortcut (Caps Lock, function, numeric pad, device-dependent bits) are dropped.
    static std::uint32_t carbonModifiers(std::uint64_t flags);

    /// {"keyCode":…,"modifiers":…} as UTF-8.
    QByteArray toJson() const;
    /// Nothing unless both members are there and are unsigned 32-bit integers.
    static std::optional<KeyCombo> fromJson(const QByteArray &json);

    friend bool operator==(const KeyCombo &, const KeyCombo &) = default;
};

} // namespace lumacap
