#include "platform/gnome/module/KeyLayout.h"

#include "platform/VirtualKeys.h"

#include <QByteArray>

#include <algorithm>
#include <span>

#include <xkbcommon/xkbcommon.h>

namespace lumacap::gnome {

namespace {

struct ReleaseContext {
    void operator()(xkb_context *context) const noexcept { xkb_context_unref(context); }
};

xkb_keysym_t symbolNamed(const QString &name)
{
    const QByteArray text = name.toUtf8();
    const auto exact = xkb_keysym_from_name(text.constData(), XKB_KEYSYM_NO_FLAGS);
    return exact != XKB_KEY_NoSymbol
        ? exact
        : xkb_keysym_from_name(text.constData(), XKB_KEYSYM_CASE_INSENSITIVE);
}

} // namespace

void KeyLayout::Release::operator()(xkb_keymap *keymap) const noexcept
{
    xkb_keymap_unref(keymap);
}

KeyLayout::KeyLayout(const QString &layout, const QString &variant, const QString &options)
{
    const std::unique_ptr<xkb_context, ReleaseContext> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context)
        return;
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    const QByteArray layoutName = layout.toUtf8();
    const QByteArray variantName = variant.toUtf8();
    const QByteArray optionNames = options.toUtf8();
    xkb_rule_names names{};
    if (!layout.isEmpty())
        names = {.rules = nullptr,
                 .model = nullptr,
                 .layout = layoutName.constData(),
                 .variant = variantName.constData(),
                 .options = optionNames.constData()};
    m_keymap.reset(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!m_keymap)
        m_keymap.reset(
            xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

bool KeyLayout::isOn(std::uint32_t key, const QString &symbol) const
{
    const auto wanted = symbolNamed(symbol);
    if (!m_keymap || wanted == XKB_KEY_NoSymbol)
        return false;
    const xkb_keycode_t code = key + scanCodeOffset;
    const auto levels = xkb_keymap_num_levels_for_key(m_keymap.get(), code, 0);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        const xkb_keysym_t *symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(m_keymap.get(), code, 0, level, &symbols);
        const std::span there(symbols, static_cast<std::size_t>(std::max(count, 0)));
        if (std::ranges::find(there, wanted) != there.end())
            return true;
    }
    return false;
}

} // namespace lumacap::gnome
