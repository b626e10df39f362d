#include "platform/kwin/hotkeys/Keymap.h"

#include "platform/CarbonModifiers.h"

#include <Qt>

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace lumacap::kwin {

namespace {

constexpr std::uint32_t controlShift = carbon::controlKey | carbon::shiftKey;

/// What the system has for `layouts`.
Keymap keymap(const char *layouts)
{
    qputenv("XKB_DEFAULT_LAYOUT", layouts);
    auto made = Keymap::systemDefault();
    EXPECT_TRUE(made);
    return *std::move(made);
}

int number(QKeyCombination combination)
{
    return combination.toCombined();
}

} // namespace

TEST(KeymapTest, aLetterKeepsItsShift)
{
    const KeySequences sequences = keymap("us").sequences(KEY_A, controlShift, 0);
    EXPECT_THAT(sequences.required, ElementsAre(number(Qt::CTRL | Qt::SHIFT | Qt::Key_A)));
    EXPECT_THAT(sequences.whileLocked, IsEmpty());
}

TEST(KeymapTest, aSymbolOwedToShiftIsLookedForWithoutIt)
{
    EXPECT_THAT(keymap("us").sequences(KEY_3, controlShift, 0).required,
                ElementsAre(number(Qt::CTRL | Qt::SHIFT | Qt::Key_3),
                            number(Qt::CTRL | Qt::Key_NumberSign)));
}

TEST(KeymapTest, theKeyIsWhatTheCurrentLayoutMakesOfIt)
{
    const Keymap two = keymap("us,fr");
    EXPECT_THAT(two.sequences(KEY_A, carbon::controlKey, 0).required,
                ElementsAre(number(Qt::CTRL | Qt::Key_A)));
    EXPECT_THAT(two.sequences(KEY_A, carbon::controlKey, 1).required,
                ElementsAre(number(Qt::CTRL | Qt::Key_Q)));
    EXPECT_THAT(
        two.sequences(KEY_3, controlShift, 1).required,
        ElementsAre(number(Qt::CTRL | Qt::SHIFT | Qt::Key_QuoteDbl), number(Qt::CTRL | Qt::Key_3)));
}

TEST(KeymapTest, aKeyWithoutACharacterIsKnownByItsName)
{
    EXPECT_THAT(keymap("us").sequences(KEY_F9, carbon::cmdKey | carbon::optionKey, 0).required,
                ElementsAre(number(Qt::META | Qt::ALT | Qt::Key_F9)));
    EXPECT_THAT(keymap("us").sequences(KEY_SYSRQ, 0, 0).required, ElementsAre(int{Qt::Key_Print}));
}

TEST(KeymapTest, aKeyOfTheKeypadIsTwoKeys)
{
    const int keypad = Qt::KeypadModifier;
    const KeySequences sequences = keymap("us").sequences(KEY_KP1, carbon::controlKey, 0);
    EXPECT_THAT(sequences.all(),
                UnorderedElementsAre(number(Qt::CTRL | Qt::Key_End) | keypad,
                                     number(Qt::CTRL | Qt::Key_1) | keypad));
}

TEST(KeymapTest, lettersOfOtherScriptsAreTheirCapitals)
{
    EXPECT_THAT(keymap("ru").sequences(KEY_A, carbon::controlKey, 0).required,
                ElementsAre(number(QKeyCombination(Qt::CTRL, static_cast<Qt::Key>(0x424)))));
}

TEST(KeymapTest, aKeyThatTheKeyboardDoesNotHaveIsNone)
{
    EXPECT_THAT(keymap("us").sequences(0x2ff, carbon::controlKey, 0).all(), IsEmpty());
}

TEST(KeymapTest, rubbishIsNoKeymap)
{
    EXPECT_FALSE(Keymap::fromText({}));
    EXPECT_FALSE(Keymap::fromText("xkb_keymap { nothing of the kind"));
    EXPECT_FALSE(Keymap::fromText(QByteArray(100'000, '\xff')));
}

} // namespace lumacap::kwin
