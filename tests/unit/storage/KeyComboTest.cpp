#include "preferences/storage/KeyCombo.h"

#include <gmock/gmock.h>

#include <map>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

constexpr std::uint32_t allModifiers =
    carbon::cmdKey | carbon::shiftKey | carbon::optionKey | carbon::controlKey;

/// The designed labels, written down a second time on purpose.
const std::map<std::uint32_t, QString> designedLabels{
    {0, u"A"_s},       {1, u"S"_s},     {2, u"D"_s},     {3, u"F"_s},      {4, u"H"_s},
    {5, u"G"_s},       {6, u"Z"_s},     {7, u"X"_s},     {8, u"C"_s},      {9, u"V"_s},
    {11, u"B"_s},      {12, u"Q"_s},    {13, u"W"_s},    {14, u"E"_s},     {15, u"R"_s},
    {16, u"Y"_s},      {17, u"T"_s},    {18, u"1"_s},    {19, u"2"_s},     {20, u"3"_s},
    {21, u"4"_s},      {22, u"6"_s},    {23, u"5"_s},    {24, u"9"_s},     {25, u"7"_s},
    {26, u"-"_s},      {27, u"8"_s},    {28, u"0"_s},    {29, u"]"_s},     {30, u"O"_s},
    {31, u"U"_s},      {32, u"["_s},    {33, u"I"_s},    {34, u"P"_s},     {35, u"L"_s},
    {36, u"Return"_s}, {37, u"J"_s},    {39, u"K"_s},    {44, u"/"_s},     {45, u"N"_s},
    {46, u"M"_s},      {47, u"."_s},    {48, u"Tab"_s},  {49, u"Space"_s}, {51, u"Delete"_s},
    {53, u"Esc"_s},    {122, u"F1"_s},  {120, u"F2"_s},  {99, u"F3"_s},    {118, u"F4"_s},
    {96, u"F5"_s},     {97, u"F6"_s},   {98, u"F7"_s},   {100, u"F8"_s},   {101, u"F9"_s},
    {109, u"F10"_s},   {103, u"F11"_s}, {111, u"F12"_s},
};

} // namespace

TEST(KeyCombo, labelsEveryKeyAsDesignedAndEveryOtherByItsCode)
{
    ASSERT_EQ(designedLabels.size(), 58U);
    for (std::uint32_t code = 0; code < 300; ++code) {
        const auto label = designedLabels.find(code);
        const QString expected =
            label == designedLabels.end() ? u"Key"_s + QString::number(code) : label->second;
        EXPECT_EQ(KeyCombo::keyCodeToString(code), expected) << code;
    }
}

TEST(KeyCombo, labelsTheLargestCodeByItsDecimals)
{
    EXPECT_EQ(KeyCombo::keyCodeToString(4294967295U), u"Key4294967295"_s);
}

TEST(KeyCombo, showsTheGlyphsInAFixedOrderBeforeTheLabel)
{
    EXPECT_EQ((KeyCombo{24, carbon::cmdKey}.displayString()), u"⌘9"_s);
    EXPECT_EQ((KeyCombo{0, allModifiers}.displayString()), u"⌃⌥⇧⌘A"_s);
    EXPECT_EQ((KeyCombo{50, 0}.displayString()), u"Key50"_s);
    EXPECT_EQ((KeyCombo{18, 4608}.displayString()), u"⌃⇧1"_s);
    EXPECT_EQ((KeyCombo{49, carbon::cmdKey | carbon::optionKey}.displayString()), u"⌥⌘Space"_s);
}

TEST(KeyCombo, showsNothingForBitsThatAreNoModifier)
{
    EXPECT_EQ((KeyCombo{0, 0x0400U | 0x80000000U}.displayString()), u"A"_s);
}

TEST(KeyCombo, takesTheFourModifiersOfAnEventAndDropsItsOtherFlags)
{
    EXPECT_EQ(KeyCombo::carbonModifiers(0x1A0000), 0x0B00U);
    EXPECT_EQ(KeyCombo::carbonModifiers(0x40000), 0x1000U);
    EXPECT_EQ(KeyCombo::carbonModifiers(0x10000), 0U);
    EXPECT_EQ(KeyCombo::carbonModifiers(0xFFFFFFFFFFFFFFFFU), allModifiers);
    EXPECT_EQ(KeyCombo::carbonModifiers(0), 0U);
}

TEST(KeyCombo, isStoredAsAnObjectWithTwoNumbers)
{
    EXPECT_EQ((KeyCombo{18, 4608}.toJson()), QByteArray(R"({"keyCode":18,"modifiers":4608})"));
}

TEST(KeyCombo, comesBackFromWhatWasStored)
{
    for (const KeyCombo combo :
         {KeyCombo{0, 0}, KeyCombo{18, 4608}, KeyCombo{4294967295U, 4294967295U}})
        EXPECT_EQ(KeyCombo::fromJson(combo.toJson()), combo);
}

TEST(KeyCombo, isReadInAnyOrderWithOtherMembersBeside)
{
    EXPECT_EQ(KeyCombo::fromJson(R"( {"modifiers": 256, "more": [1], "keyCode": 7} )"),
              (KeyCombo{7, 256}));
}

TEST(KeyCombo, isNotReadFromAnythingElse)
{
    for (const char *json : {
             R"({"keyCode":18})",
             R"({"modifiers":4608})",
             R"({"keyCode":"18","modifiers":4608})",
             R"({"keyCode":true,"modifiers":4608})",
             R"({"keyCode":null,"modifiers":4608})",
             R"({"keyCode":18.5,"modifiers":4608})",
             R"({"keyCode":-1,"modifiers":4608})",
             R"({"keyCode":4294967296,"modifiers":4608})",
             R"({"keyCode":18,"modifiers":1e300})",
             R"([18,4608])",
             R"({"keyCode":18,"modifiers":4608)",
             "",
             "\xff\xfe\x00",
             "18",
         })
        EXPECT_EQ(KeyCombo::fromJson(json), std::nullopt) << json;
}

TEST(KeyCombo, isEqualWhenBothFieldsAre)
{
    EXPECT_EQ((KeyCombo{1, 2}), (KeyCombo{1, 2}));
    EXPECT_NE((KeyCombo{1, 2}), (KeyCombo{2, 2}));
    EXPECT_NE((KeyCombo{1, 2}), (KeyCombo{1, 1}));
}

} // namespace lumacap
