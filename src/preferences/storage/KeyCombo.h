#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace lumacap {

/// Modifier bits of a stored shortcut, in the Carbon encoding; the same mask in memory, on disk and
/// when a shortcut is registered.
namespace carbon {
inline constexpr std::uint32_t cmdKey = 0x0100;
inline constexpr std::uint32_t shiftKey = 0x0200;
inline constexpr std::uint32_t optionKey = 0x0800;
inline constexpr std::uint32_t controlKey = 0x1000;
} // namespace carbon

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
