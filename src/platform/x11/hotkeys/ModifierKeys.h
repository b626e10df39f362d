#pragma once

#include "platform/x11/HeldKeys.h"

#include <QCoroTask>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// The symbols of keys, as many for each key, the first key's first.
struct KeySymbols {
    std::size_t firstKey = 0;
    std::size_t symbolsPerKey = 0;
    std::span<const std::uint32_t> symbols;

    /// Those of one key; none for a key that has none.
    std::span<const std::uint32_t> of(std::uint8_t key) const;
};

/// Which keys of a keyboard are modifiers. Masks are of the core protocol's eight modifier bits;
/// which of the upper five stands for what is the keyboard's own choice.
struct ModifierKeys {
    /// What each key sets while it is held, by key code.
    std::array<std::uint8_t, 256> masks{};
    std::uint8_t option = 0; ///< none where the keyboard has no Alt
    std::uint8_t command = 0; ///< none where it has no Super
    std::uint8_t locks = 0; ///< Caps, Num and Scroll Lock, where it has them

    /// `mapping` has the keys of each modifier bit in turn, zeros filling up each row.
    static ModifierKeys of(std::span<const std::uint8_t> mapping, const KeySymbols &symbols);
    /// Asks the server; nothing when it does not answer.
    static QCoro::Task<std::optional<ModifierKeys>> ask(xcb::Connection &connection);

    /// The mask for one in the Carbon encoding; nothing when the keyboard lacks one of its keys.
    std::optional<std::uint8_t> maskOf(std::uint32_t carbonModifiers) const;
    /// All that shortcuts can be made of.
    std::uint8_t ofShortcuts() const;
    /// The mask of the keys that are down, without the locks.
    std::uint8_t heldAmong(const KeyCodes &keys) const;

    friend bool operator==(const ModifierKeys &, const ModifierKeys &) = default;
};

} // namespace lumacap::x11
