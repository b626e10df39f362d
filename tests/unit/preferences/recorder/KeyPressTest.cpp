#include "preferences/recorder/KeyPress.h"

#include "Keys.h"
#include "platform/VirtualKeys.h"
#include "preferences/storage/EventFlags.h"

#include <gmock/gmock.h>

namespace lumacap::tests {
namespace {

struct Case {
    const char *name;
    Key key;
    Qt::KeyboardModifiers modifiers;
    quint32 nativeModifiers;
    KeyPress expected;
};

class EveryKeyPress : public testing::TestWithParam<Case> { };

TEST_P(EveryKeyPress, hasTheCodeOfItsPlaceAndItsFlags)
{
    const Case &given = GetParam();
    EXPECT_EQ(keyPressOf(keyPress(given.key, given.modifiers, given.nativeModifiers)),
              given.expected);
}

using namespace eventflag;
constexpr Qt::KeyboardModifiers none;

INSTANTIATE_TEST_SUITE_P(
    KeyPress, EveryKeyPress,
    testing::Values(
        Case{"aLetterAlone", letterA, none, 0, {0, 0}},
        Case{"thePlaceCountsAndNotTheLayout", letterQOfAFrenchLayout, none, 0, {0, 0}},
        Case{"shift", letterA, Qt::ShiftModifier, 1, {0, shift}},
        Case{"control", letterA, Qt::ControlModifier, 4, {0, control}},
        Case{"altIsOption", letterA, Qt::AltModifier, 8, {0, option}},
        Case{"metaIsCommand", letterA, Qt::MetaModifier, 64, {0, command}},
        Case{"allFour",
             digitFive,
             Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier,
             77,
             {23, shift | control | option | command}},
        Case{"altGrIsNone", letterA, Qt::GroupSwitchModifier, 128, {0, 0}},
        Case{"capsLock", letterA, none, capsLockIsOn, {0, capsLock}},
        Case{"numLockIsNone", letterA, none, 16, {0, 0}},
        Case{"aFunctionKey", functionFive, none, 0, {96, function}},
        Case{"theLastFunctionKey", {198, Qt::Key_F20}, none, 0, {90, function}},
        Case{"anArrow", {113, Qt::Key_Left}, none, 0, {123, function}},
        Case{"home", {110, Qt::Key_Home}, none, 0, {115, function}},
        Case{"pageDown", {117, Qt::Key_PageDown}, none, 0, {121, function}},
        Case{"insert", {118, Qt::Key_Insert}, none, 0, {114, function}},
        Case{"forwardDelete", {119, Qt::Key_Delete}, none, 0, {117, function}},
        Case{"backspaceHasNone", {22, Qt::Key_Backspace}, none, 0, {51, 0}},
        Case{"print", {107, Qt::Key_Print}, none, 0, {virtualkey::print, function}},
        Case{"printWithAlt",
             {107, Qt::Key_SysReq},
             Qt::AltModifier,
             8,
             {virtualkey::print, option | function}},
        Case{"scrollLock", {78, Qt::Key_ScrollLock}, none, 0, {virtualkey::scrollLock, function}},
        Case{"pause", {127, Qt::Key_Pause}, none, 0, {virtualkey::pause, function}},
        Case{"aKeypadDigit", {84, Qt::Key_5}, Qt::KeypadModifier, 16, {87, numericPad}},
        Case{"keypadEnter", {104, Qt::Key_Enter}, Qt::KeypadModifier, 0, {76, numericPad}},
        Case{"return", {36, Qt::Key_Return}, none, 0, {36, 0}},
        Case{"theKeyThatAnsiKeyboardsLack", {94, Qt::Key_Less}, none, 0, {10, 0}}),
    [](const auto &given) { return given.param.name; });

TEST(KeyPress, isNoneOfAModifierAlone)
{
    for (const Key key :
         {Key{50, Qt::Key_Shift}, Key{62, Qt::Key_Shift}, Key{37, Qt::Key_Control},
          Key{105, Qt::Key_Control}, Key{64, Qt::Key_Alt}, Key{108, Qt::Key_Alt},
          Key{108, Qt::Key_AltGr}, Key{133, Qt::Key_Super_L}, Key{134, Qt::Key_Meta},
          Key{66, Qt::Key_CapsLock}, Key{77, Qt::Key_NumLock, 0xFF7F}})
        EXPECT_FALSE(keyPressOf(keyPress(key, Qt::ControlModifier))) << key.scanCode;
}

TEST(KeyPress, isNoneOfAnotherKeyThatTheLayoutMadeAModifier)
{
    constexpr quint32 level3Shift = 0xFE03;
    constexpr quint32 level5Shift = 0xFE11; // the toolkit has no name for it
    constexpr quint32 level5Lock = 0xFE13;
    constexpr quint32 modeSwitch = 0xFF7E;
    constexpr quint32 hyper = 0xFFED;
    for (const quint32 symbol : {level3Shift, level5Shift, level5Lock, modeSwitch, hyper})
        EXPECT_FALSE(keyPressOf(keyPress({94, Qt::Key_unknown, symbol}, Qt::ShiftModifier)))
            << symbol;
}

TEST(KeyPress, isOneOfAKeyThatBearsADeadSymbol)
{
    constexpr quint32 deadGrave = 0xFE50;
    EXPECT_EQ(keyPressOf(keyPress({34, Qt::Key_Dead_Grave, deadGrave}, Qt::ControlModifier)),
              (KeyPress{33, control}));
}

TEST(KeyPress, isOneOfAKeyThatChoosesTheNextLayout)
{
    constexpr quint32 nextGroup = 0xFE08;
    EXPECT_EQ(keyPressOf(keyPress({65, Qt::Key_unknown, nextGroup}, Qt::MetaModifier)),
              (KeyPress{49, command}));
}

TEST(KeyPress, isNoneOfAKeyThatRepeats)
{
    const QKeyEvent repeated(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier, 38, 0, 0, QString(),
                             true);
    EXPECT_FALSE(keyPressOf(repeated));
}

TEST(KeyPress, isNoneOfAKeyWithoutACode)
{
    EXPECT_FALSE(keyPressOf(keyPress({0, Qt::Key_A}, Qt::ControlModifier)));
    EXPECT_FALSE(keyPressOf(keyPress({121, Qt::Key_VolumeMute}, Qt::ControlModifier)));
}

} // namespace
} // namespace lumacap::tests
