#pragma once

#include <QString>

#include <cstdint>
#include <memory>

struct xkb_keymap;

namespace lumacap::gnome {

/// What stands on the keys of a keyboard.
class KeyLayout {
public:
    /// A layout by XKB's names ("fr", "oss", "caps:escape,…"); the system's own where they are
    /// empty or unknown.
    KeyLayout(const QString &layout, const QString &variant, const QString &options);

    /// Whether the symbol of this name ("a", "exclam") stands on the key of the evdev code.
    bool isOn(std::uint32_t key, const QString &symbol) const;

private:
    struct Release {
        void operator()(xkb_keymap *keymap) const noexcept;
    };

    std::unique_ptr<xkb_keymap, Release> m_keymap; ///< null where XKB is not whole
};

} // namespace lumacap::gnome
