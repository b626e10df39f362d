#include "platform/kwin/hotkeys/Keymap.h"

#include "platform/CarbonModifiers.h"
#include "platform/VirtualKeys.h"
#include "platform/kwin/hotkeys/ToolkitKeys.h"

#include <QChar>

#include <array>
#include <utility>

#include <xkbcommon/xkbcommon.h>

namespace lumacap::kwin {

namespace {

struct Release {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};

std::unique_ptr<xkb_context, Release> newContext()
{
    std::unique_ptr<xkb_context, Release> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (context != nullptr) // a map from elsewhere is no reason to write on our standard error
        xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    return context;
}

struct ModifierRow {
    std::uint32_t carbon;
    Qt::KeyboardModifier toolkit;
    const char *name;
};

constexpr std::array modifierRows{
    ModifierRow{carbon::shiftKey, Qt::ShiftModifier, XKB_MOD_NAME_SHIFT},
    ModifierRow{carbon::controlKey, Qt::ControlModifier, XKB_MOD_NAME_CTRL},
    ModifierRow{carbon::optionKey, Qt::AltModifier, XKB_MOD_NAME_ALT},
    ModifierRow{carbon::cmdKey, Qt::MetaModifier, XKB_MOD_NAME_LOGO},
};

xkb_mod_mask_t maskOf(xkb_keymap *keymap, const char *modifier)
{
    const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap, modifier);
    return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
}

xkb_mod_mask_t maskOf(xkb_keymap *keymap, std::uint32_t carbonModifiers)
{
    xkb_mod_mask_t mask = 0;
    for (const ModifierRow &row : modifierRows) {
        if ((carbonModifiers & row.carbon) != 0)
            mask |= maskOf(keymap, row.name);
    }
    return mask;
}

Qt::KeyboardModifiers toolkitModifiers(std::uint32_t carbonModifiers)
{
    Qt::KeyboardModifiers modifiers;
    for (const ModifierRow &row : modifierRows)
        modifiers.setFlag(row.toolkit, (carbonModifiers & row.carbon) != 0);
    return modifiers;
}

/// A key at the moment it is pressed.
class PressedKey {
public:
    PressedKey(xkb_keymap *keymap, xkb_keycode_t key, xkb_mod_mask_t held, xkb_mod_mask_t locked,
               std::uint32_t layout)
        : m_keymap(keymap)
        , m_key(key)
        , m_state(xkb_state_new(keymap))
    {
        xkb_state_update_mask(m_state.get(), held, 0, locked, 0, 0, layout);
    }

    xkb_keysym_t symbol() const { return xkb_state_key_get_one_sym(m_state.get(), m_key); }
    /// The modifiers that the symbol is owed to.
    Qt::KeyboardModifiers consumed() const
    {
        Qt::KeyboardModifiers consumed;
        for (const ModifierRow &row : modifierRows) {
            const xkb_mod_index_t index = xkb_keymap_mod_get_index(m_keymap, row.name);
            consumed.setFlag(row.toolkit,
                             index != XKB_MOD_INVALID
                                 && xkb_state_mod_index_is_consumed2(m_state.get(), m_key, index,
                                                                     XKB_CONSUMED_MODE_GTK)
                                     == 1);
        }
        return consumed;
    }

private:
    xkb_keymap *m_keymap;
    xkb_keycode_t m_key;
    std::unique_ptr<xkb_state, Release> m_state;
};

void add(QList<int> &sequences, Qt::KeyboardModifiers modifiers, xkb_keysym_t symbol)
{
    const Qt::Key key = toolkitKey(symbol);
    if (isOfKeypad(symbol))
        modifiers |= Qt::KeypadModifier;
    const int sequence = QKeyCombination(modifiers, key).toCombined();
    if (key != Qt::Key_unknown && !sequences.contains(sequence))
        sequences.append(sequence);
}

/// What KWin looks for: it drops the modifiers that the symbol is owed to, of Ctrl+Shift+3 the
/// Shift that makes it a #, but keeps the Shift of letters.
void addPressed(QList<int> &sequences, Qt::KeyboardModifiers modifiers, const PressedKey &pressed)
{
    const xkb_keysym_t symbol = pressed.symbol();
    Qt::KeyboardModifiers consumed = pressed.consumed();
    if (consumed == Qt::ShiftModifier && QChar::isLetter(toolkitKey(symbol)))
        consumed = {};
    add(sequences, modifiers & ~consumed, symbol);
}

} // namespace

void Keymap::Release::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

Keymap::Keymap(Owned keymap)
    : m_keymap(std::move(keymap))
{
}

std::optional<Keymap> Keymap::owning(Owned keymap)
{
    return keymap == nullptr ? std::nullopt : std::optional(Keymap(std::move(keymap)));
}

std::optional<Keymap> Keymap::fromText(const QByteArray &text)
{
    const auto context = newContext();
    if (context == nullptr)
        return std::nullopt;
    return owning(Owned(xkb_keymap_new_from_buffer(
        context.get(), text.constData(), static_cast<std::size_t>(text.size()),
        XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS)));
}

std::optional<Keymap> Keymap::systemDefault()
{
    const auto context = newContext();
    if (context == nullptr)
        return std::nullopt;
    return owning(
        Owned(xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS)));
}

KeySequences Keymap::sequences(std::uint32_t evdevCode, std::uint32_t carbonModifiers,
                               std::uint32_t layout) const
{
    xkb_keymap *const keymap = m_keymap.get();
    const xkb_keycode_t key = evdevCode + scanCodeOffset;
    if (xkb_keymap_num_layouts_for_key(keymap, key) == 0)
        return {};
    const Qt::KeyboardModifiers modifiers = toolkitModifiers(carbonModifiers);
    const xkb_mod_mask_t held = maskOf(keymap, carbonModifiers);
    KeySequences sequences;
    add(sequences.required, modifiers, PressedKey(keymap, key, 0, 0, layout).symbol());
    addPressed(sequences.required, modifiers, PressedKey(keymap, key, held, 0, layout));
    QList<int> all = sequences.required;
    const xkb_mod_mask_t number = maskOf(keymap, XKB_MOD_NAME_NUM);
    const xkb_mod_mask_t capitals = maskOf(keymap, XKB_MOD_NAME_CAPS);
    for (const xkb_mod_mask_t locked : {number, capitals, number | capitals})
        addPressed(all, modifiers, PressedKey(keymap, key, held, locked, layout));
    sequences.whileLocked = all.sliced(sequences.required.size());
    return sequences;
}

} // namespace lumacap::kwin
