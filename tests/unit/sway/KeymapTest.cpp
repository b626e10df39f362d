#include "platform/wlroots/sway/hotkeys/Keymap.h"

#include <gtest/gtest.h>

#include <memory>

#include <xkbcommon/xkbcommon.h>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

constexpr std::uint32_t three = 12; // the codes of keys, as X counts
constexpr std::uint32_t q = 24;
constexpr std::uint32_t controlShift = modifier::control | modifier::shift;

/// A keymap as a compositor tells it.
Keymap keymapOf(const char *layouts)
{
    xkb_context *const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = ""};
    xkb_keymap *const keymap =
        xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    char *const text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    Keymap told{QByteArray(text)};
    std::free(text);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return told;
}

ConfiguredKey symbol(std::uint32_t modifiers, const QString &key)
{
    return {ConfiguredKey::By::Symbol, modifiers, key};
}

TEST(Keymap, aCodeIsItsKeyWithTheSameModifiersOnly)
{
    const Keymap keymap = keymapOf("us");
    const ConfiguredKey configured{ConfiguredKey::By::Code, controlShift, u"12"_s};
    EXPECT_TRUE(keymap.isMeant(configured, three, controlShift));
    EXPECT_FALSE(keymap.isMeant(configured, three, modifier::control));
    EXPECT_FALSE(keymap.isMeant(configured, q, controlShift));
}

TEST(Keymap, aSymbolIsTheKeyThatHasItAloneWithAllModifiers)
{
    const Keymap keymap = keymapOf("us");
    EXPECT_TRUE(keymap.isMeant(symbol(controlShift, u"3"_s), three, controlShift));
    EXPECT_FALSE(keymap.isMeant(symbol(modifier::control, u"3"_s), three, controlShift));
    EXPECT_FALSE(keymap.isMeant(symbol(controlShift, u"4"_s), three, controlShift));
}

TEST(Keymap, aShiftedSymbolIsMeantWithoutShift)
{
    const Keymap keymap = keymapOf("us");
    EXPECT_TRUE(keymap.isMeant(symbol(modifier::control, u"numbersign"_s), three, controlShift));
    EXPECT_FALSE(keymap.isMeant(symbol(controlShift, u"numbersign"_s), three, controlShift));
    EXPECT_FALSE(
        keymap.isMeant(symbol(modifier::control, u"numbersign"_s), three, modifier::control));
}

TEST(Keymap, lettersAreMeantInEitherCase)
{
    const Keymap keymap = keymapOf("us");
    EXPECT_TRUE(keymap.isMeant(symbol(controlShift, u"Q"_s), q, controlShift));
    EXPECT_TRUE(keymap.isMeant(symbol(controlShift, u"q"_s), q, controlShift));
}

TEST(Keymap, everyLayoutCounts)
{
    const Keymap keymap = keymapOf("us,fr");
    EXPECT_TRUE(keymap.isMeant(symbol(modifier::logo, u"quotedbl"_s), three, modifier::logo));
    EXPECT_TRUE(keymap.isMeant(symbol(modifier::logo, u"a"_s), q, modifier::logo));
    EXPECT_TRUE(keymap.isMeant(symbol(modifier::logo, u"q"_s), q, modifier::logo));
}

TEST(Keymap, namesOfNoSymbolMeanNoKey)
{
    const Keymap keymap = keymapOf("us");
    for (const QString &name : {u"button4"_s, u"BTN_LEFT"_s, u"no such key"_s, QString()})
        EXPECT_FALSE(keymap.isMeant(symbol(0, name), three, 0)) << name.toStdString();
}

TEST(Keymap, isTheUsualOneWhereNoneIsTold)
{
    for (const QByteArray &text : {QByteArray(), QByteArray("xkb_keymap {")})
        EXPECT_TRUE(Keymap(text).isMeant(symbol(modifier::logo, u"Return"_s), 36, modifier::logo));
}

} // namespace

} // namespace lumacap::sway
