#pragma once

#include "platform/wlroots/sway/hotkeys/ConfiguredKeys.h"

#include <QByteArray>

#include <cstdint>
#include <memory>
#include <vector>

struct xkb_keymap;

namespace lumacap::sway {

/// What symbols the keys of a keyboard have, in all its layouts.
class Keymap {
public:
    /// As the compositor tells it; the system's usual one for a text that is none.
    explicit Keymap(const QByteArray &text = {});

    /// Whether `configured` is about the key with this code, as X counts, held with exactly these
    /// modifiers, in any of the layouts.
    bool isMeant(const ConfiguredKey &configured, std::uint32_t code,
                 std::uint32_t modifiers) const;

private:
    struct Chord {
        std::uint32_t symbol = 0;
        std::uint32_t modifiers = 0;

        friend bool operator==(const Chord &, const Chord &) = default;
    };
    struct Unref {
        void operator()(xkb_keymap *keymap) const;
    };

    std::vector<Chord> chordsOf(std::uint32_t code, std::uint32_t modifiers) const;

    std::unique_ptr<xkb_keymap, Unref> m_keymap; // null where the system has none either
};

} // namespace lumacap::sway
