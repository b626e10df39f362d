#include "platform/x11/hotkeys/ModifierKeys.h"

#include "platform/CarbonModifiers.h"
#include "platform/xcb/Connection.h"

#include <algorithm>

#include <X11/keysym.h>
#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

constexpr std::size_t modifierCount = 8;

struct MeaningOfSymbol {
    std::uint32_t symbol;
    std::uint8_t ModifierKeys::*meaning;
};

constexpr std::array meanings{
    MeaningOfSymbol{XK_Alt_L, &ModifierKeys::option},
    MeaningOfSymbol{XK_Alt_R, &ModifierKeys::option},
    MeaningOfSymbol{XK_Super_L, &ModifierKeys::command},
    MeaningOfSymbol{XK_Super_R, &ModifierKeys::command},
    MeaningOfSymbol{XK_Num_Lock, &ModifierKeys::locks},
    MeaningOfSymbol{XK_Scroll_Lock, &ModifierKeys::locks},
};

struct CarbonBit {
    std::uint32_t carbon;
    std::uint8_t mask;
};

} // namespace

std::span<const std::uint32_t> KeySymbols::of(std::uint8_t key) const
{
    if (key < firstKey || (key - firstKey + 1) * symbolsPerKey > symbols.size())
        return {};
    return symbols.subspan((key - firstKey) * symbolsPerKey, symbolsPerKey);
}

ModifierKeys ModifierKeys::of(std::span<const std::uint8_t> mapping, const KeySymbols &symbols)
{
    ModifierKeys keys;
    const std::size_t keysPerModifier = mapping.size() / modifierCount;
    for (std::size_t place = 0; place < keysPerModifier * modifierCount; ++place) {
        const std::uint8_t key = mapping[place];
        if (key == 0)
            continue;
        const auto mask = static_cast<std::uint8_t>(1U << place / keysPerModifier);
        keys.masks.at(key) |= mask;
        for (const MeaningOfSymbol &known : meanings) {
            if (std::ranges::find(symbols.of(key), known.symbol) != symbols.of(key).end())
                keys.*known.meaning |= mask;
        }
    }
    // A bit that also stands for what a shortcut is made of can't be left out of account.
    keys.locks = static_cast<std::uint8_t>((keys.locks | XCB_MOD_MASK_LOCK) & ~keys.ofShortcuts());
    return keys;
}

QCoro::Task<std::optional<ModifierKeys>> ModifierKeys::ask(xcb::Connection &connection)
{
    auto *const raw = connection.raw();
    const xcb_setup_t *const setup = xcb_get_setup(raw);
    const auto mappingQuestion = xcb_get_modifier_mapping(raw);
    const auto symbolsQuestion = xcb_get_keyboard_mapping(
        raw, setup->min_keycode,
        static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1));
    const std::size_t firstKey = setup->min_keycode;
    const auto mapping =
        co_await connection.reply<xcb_get_modifier_mapping_reply_t>(mappingQuestion);
    if (!mapping)
        co_return std::nullopt;
    const auto symbols =
        co_await connection.reply<xcb_get_keyboard_mapping_reply_t>(symbolsQuestion);
    if (!symbols)
        co_return std::nullopt;
    const auto size = [](int length) { return static_cast<std::size_t>(length); };
    co_return of({xcb_get_modifier_mapping_keycodes(mapping->get()),
                  size(xcb_get_modifier_mapping_keycodes_length(mapping->get()))},
                 {firstKey,
                  symbols->get()->keysyms_per_keycode,
                  {xcb_get_keyboard_mapping_keysyms(symbols->get()),
                   size(xcb_get_keyboard_mapping_keysyms_length(symbols->get()))}});
}

std::optional<std::uint8_t> ModifierKeys::maskOf(std::uint32_t carbonModifiers) const
{
    const std::array bits{CarbonBit{carbon::shiftKey, XCB_MOD_MASK_SHIFT},
                          CarbonBit{carbon::controlKey, XCB_MOD_MASK_CONTROL},
                          CarbonBit{carbon::optionKey, option}, CarbonBit{carbon::cmdKey, command}};
    std::uint8_t mask = 0;
    for (const CarbonBit &bit : bits) {
        if ((carbonModifiers & bit.carbon) == 0)
            continue;
        if (bit.mask == 0)
            return std::nullopt;
        mask |= bit.mask;
    }
    return mask;
}

std::uint8_t ModifierKeys::ofShortcuts() const
{
    return static_cast<std::uint8_t>(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | option | command);
}

std::uint8_t ModifierKeys::heldAmong(const KeyCodes &keys) const
{
    unsigned held = 0;
    for (std::size_t key = 0; key < keys.size(); ++key)
        held |= keys[key] ? masks.at(key) : 0U;
    return static_cast<std::uint8_t>(held & ~unsigned{locks});
}

} // namespace lumacap::x11
