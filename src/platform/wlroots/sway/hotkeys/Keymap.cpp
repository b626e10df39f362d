#include "platform/wlroots/sway/hotkeys/Keymap.h"

#include <algorithm>
#include <array>
#include <span>

#include <xkbcommon/xkbcommon.h>

namespace lumacap::sway {

namespace {

struct Modifier {
    std::uint32_t mask;
    const char *name;
};

constexpr std::array shortcutModifiers{
    Modifier{modifier::shift, XKB_MOD_NAME_SHIFT},
    Modifier{modifier::control, XKB_MOD_NAME_CTRL},
    Modifier{modifier::alt, XKB_MOD_NAME_ALT},
    Modifier{modifier::logo, XKB_MOD_NAME_LOGO},
};

xkb_mod_mask_t keymapMask(xkb_keymap *keymap, std::uint32_t modifiers)
{
    xkb_mod_mask_t mask = 0;
    for (const Modifier &known : shortcutModifiers) {
        const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap, known.name);
        if ((modifiers & known.mask) != 0 && index != XKB_MOD_INVALID)
            mask |= 1U << index;
    }
    return mask;
}

std::uint32_t compositorMask(xkb_keymap *keymap, xkb_mod_mask_t keymapModifiers)
{
    std::uint32_t mask = 0;
    for (const Modifier &known : shortcutModifiers) {
        const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap, known.name);
        if (index != XKB_MOD_INVALID && (keymapModifiers & (1U << index)) != 0)
            mask |= known.mask;
    }
    return mask;
}

} // namespace

void Keymap::Unref::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

Keymap::Keymap(const QByteArray &text)
{
    xkb_context *const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    if (context == nullptr)
        return;
    if (!text.isEmpty())
        m_keymap.reset(xkb_keymap_new_from_string(
            context, text.constData(), XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!m_keymap)
        m_keymap.reset(xkb_keymap_new_from_names(context, nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
    xkb_context_unref(context); // the keymap keeps it
}

bool Keymap::isMeant(const ConfiguredKey &configured, std::uint32_t code,
                     std::uint32_t modifiers) const
{
    if (configured.by == ConfiguredKey::By::Code)
        return configured.modifiers == modifiers && configured.key.toUInt() == code;
    const Chord meant{
        xkb_keysym_from_name(configured.key.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE),
        configured.modifiers};
    const std::vector<Chord> chords = chordsOf(code, modifiers);
    return std::ranges::any_of(chords, [&meant](const Chord &chord) {
        return chord.modifiers == meant.modifiers
            && xkb_keysym_to_lower(chord.symbol) == xkb_keysym_to_lower(meant.symbol);
    });
}

/// The compositor looks for a binding twice: for the symbol that the key has alone, with all
/// modifiers, and for the one that it has with them, without those that went into it.
std::vector<Keymap::Chord> Keymap::chordsOf(std::uint32_t code, std::uint32_t modifiers) const
{
    std::vector<Chord> chords;
    if (!m_keymap)
        return chords;
    xkb_keymap *const keymap = m_keymap.get();
    const auto append = [&chords](const xkb_keysym_t *symbols, int count, std::uint32_t held) {
        for (const xkb_keysym_t symbol : std::span(symbols, static_cast<std::size_t>(count)))
            chords.push_back({symbol, held});
    };
    xkb_state *const state = xkb_state_new(keymap);
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap, code);
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
        const xkb_keysym_t *symbols = nullptr;
        const int alone = xkb_keymap_key_get_syms_by_level(keymap, code, layout, 0, &symbols);
        append(symbols, alone, modifiers);
        xkb_state_update_mask(state, keymapMask(keymap, modifiers), 0, 0, 0, 0, layout);
        const xkb_mod_mask_t consumed =
            xkb_state_key_get_consumed_mods2(state, code, XKB_CONSUMED_MODE_XKB);
        const int together = xkb_state_key_get_syms(state, code, &symbols);
        append(symbols, together, modifiers & ~compositorMask(keymap, consumed));
    }
    xkb_state_unref(state);
    return chords;
}

} // namespace lumacap::sway
