#include "platform/gnome/module/Accelerator.h"

#include "platform/CarbonModifiers.h"
#include "platform/gnome/module/KeyLayout.h"

#include <gmock/gmock.h>

namespace lumacap::gnome {

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t keyOne = 2;
constexpr std::uint32_t keyA = 30;

} // namespace

TEST(Accelerator, isAKeyWithItsModifiers)
{
    EXPECT_EQ(parseAccelerator(u"<Control><Shift>a"),
              (Accelerator{u"a"_s, carbon::controlKey | carbon::shiftKey}));
    EXPECT_EQ(parseAccelerator(u"<Super><Alt>Print"),
              (Accelerator{u"Print"_s, carbon::cmdKey | carbon::optionKey}));
    EXPECT_EQ(parseAccelerator(u"F5"), (Accelerator{u"F5"_s, 0}));
}

TEST(Accelerator, knowsOtherNamesOfTheModifiers)
{
    for (const auto &text : {u"<Primary>a"_s, u"<Ctrl>a"_s, u"<ctl>a"_s, u"<CONTROL>a"_s})
        EXPECT_EQ(parseAccelerator(text), (Accelerator{u"a"_s, carbon::controlKey}));
    EXPECT_EQ(parseAccelerator(u"<Mod1>a"), (Accelerator{u"a"_s, carbon::optionKey}));
    EXPECT_EQ(parseAccelerator(u"<Mod4>a"), (Accelerator{u"a"_s, carbon::cmdKey}));
}

TEST(Accelerator, isNoneWhereNoKeyIsMeant)
{
    for (const auto &text : {u""_s, u"disabled"_s, u"<Control>"_s, u"<Control"_s, u"<Hyper>a"_s,
                             u"<>a"_s, u"<Control><"_s})
        EXPECT_EQ(parseAccelerator(text), std::nullopt) << text.toStdString();
}

TEST(Accelerator, isWrittenByThePlaceOfTheKey)
{
    EXPECT_EQ(acceleratorText({keyOne, carbon::controlKey | carbon::shiftKey}),
              u"<Control><Shift>0x0a"_s);
    EXPECT_EQ(acceleratorText({keyA, carbon::cmdKey | carbon::optionKey}), u"<Alt><Super>0x26"_s);
    EXPECT_EQ(acceleratorText({99, 0}), u"0x6b"_s);
}

TEST(Accelerator, isReadAsItWasWritten)
{
    const KeyChord chord{keyA, carbon::controlKey | carbon::shiftKey | carbon::cmdKey};

    const auto read = parseAccelerator(acceleratorText(chord));

    ASSERT_TRUE(read);
    EXPECT_EQ(read->modifiers, chord.modifiers);
    EXPECT_EQ(physicalKey(*read), chord.key);
}

TEST(Accelerator, namesNoPlaceWhereItNamesASymbol)
{
    for (const auto &key : {u"a"_s, u"0"_s, u"0x"_s, u"0xzz"_s, u"0x05"_s, u"x"_s})
        EXPECT_EQ(physicalKey({key, 0}), std::nullopt) << key.toStdString();
}

TEST(KeyLayout, knowsWhatStandsOnAKey)
{
    const KeyLayout us(u"us"_s, {}, {});

    EXPECT_TRUE(us.isOn(keyOne, u"1"_s));
    EXPECT_TRUE(us.isOn(keyOne, u"exclam"_s));
    EXPECT_TRUE(us.isOn(keyA, u"a"_s));
    EXPECT_TRUE(us.isOn(keyA, u"A"_s));
    EXPECT_FALSE(us.isOn(keyA, u"q"_s));
    EXPECT_FALSE(us.isOn(keyA, u"no such symbol"_s));
    EXPECT_FALSE(us.isOn(100000, u"a"_s));
}

TEST(KeyLayout, isThePersonsOwn)
{
    const KeyLayout french(u"fr"_s, u"oss"_s, {});

    EXPECT_TRUE(french.isOn(keyA, u"q"_s));
    EXPECT_FALSE(french.isOn(keyA, u"a"_s));
    EXPECT_TRUE(french.isOn(keyOne, u"ampersand"_s));
}

TEST(KeyLayout, isTheSystemsWhereItsNameIsUnknown)
{
    EXPECT_TRUE(KeyLayout(u"no such layout"_s, {}, {}).isOn(keyOne, u"1"_s));
}

} // namespace lumacap::gnome
