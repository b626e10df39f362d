#include "platform/portal/shortcuts/ShortcutTrigger.h"

#include "platform/CarbonModifiers.h"
#include "platform/VirtualKeys.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>

#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

struct Modifier {
    std::uint32_t bit;
    QLatin1StringView name;
};

/// In the order in which shortcuts are written.
constexpr std::array modifiers{
    Modifier{carbon::controlKey, "CTRL"_L1}, Modifier{carbon::optionKey, "ALT"_L1},
    Modifier{carbon::shiftKey, "SHIFT"_L1}, Modifier{carbon::cmdKey, "LOGO"_L1}};

struct KeyName {
    std::uint32_t evdevCode;
    QLatin1StringView name;
};

/// As libxkbcommon names what the keys type without Shift.
constexpr std::array keyNames{
    KeyName{KEY_ESC, "Escape"_L1},
    KeyName{KEY_1, "1"_L1},
    KeyName{KEY_2, "2"_L1},
    KeyName{KEY_3, "3"_L1},
    KeyName{KEY_4, "4"_L1},
    KeyName{KEY_5, "5"_L1},
    KeyName{KEY_6, "6"_L1},
    KeyName{KEY_7, "7"_L1},
    KeyName{KEY_8, "8"_L1},
    KeyName{KEY_9, "9"_L1},
    KeyName{KEY_0, "0"_L1},
    KeyName{KEY_MINUS, "minus"_L1},
    KeyName{KEY_EQUAL, "equal"_L1},
    KeyName{KEY_BACKSPACE, "BackSpace"_L1},
    KeyName{KEY_TAB, "Tab"_L1},
    KeyName{KEY_Q, "q"_L1},
    KeyName{KEY_W, "w"_L1},
    KeyName{KEY_E, "e"_L1},
    KeyName{KEY_R, "r"_L1},
    KeyName{KEY_T, "t"_L1},
    KeyName{KEY_Y, "y"_L1},
    KeyName{KEY_U, "u"_L1},
    KeyName{KEY_I, "i"_L1},
    KeyName{KEY_O, "o"_L1},
    KeyName{KEY_P, "p"_L1},
    KeyName{KEY_LEFTBRACE, "bracketleft"_L1},
    KeyName{KEY_RIGHTBRACE, "bracketright"_L1},
    KeyName{KEY_ENTER, "Return"_L1},
    KeyName{KEY_A, "a"_L1},
    KeyName{KEY_S, "s"_L1},
    KeyName{KEY_D, "d"_L1},
    KeyName{KEY_F, "f"_L1},
    KeyName{KEY_G, "g"_L1},
    KeyName{KEY_H, "h"_L1},
    KeyName{KEY_J, "j"_L1},
    KeyName{KEY_K, "k"_L1},
    KeyName{KEY_L, "l"_L1},
    KeyName{KEY_SEMICOLON, "semicolon"_L1},
    KeyName{KEY_APOSTROPHE, "apostrophe"_L1},
    KeyName{KEY_GRAVE, "grave"_L1},
    KeyName{KEY_BACKSLASH, "backslash"_L1},
    KeyName{KEY_Z, "z"_L1},
    KeyName{KEY_X, "x"_L1},
    KeyName{KEY_C, "c"_L1},
    KeyName{KEY_V, "v"_L1},
    KeyName{KEY_B, "b"_L1},
    KeyName{KEY_N, "n"_L1},
    KeyName{KEY_M, "m"_L1},
    KeyName{KEY_COMMA, "comma"_L1},
    KeyName{KEY_DOT, "period"_L1},
    KeyName{KEY_SLASH, "slash"_L1},
    KeyName{KEY_KPASTERISK, "KP_Multiply"_L1},
    KeyName{KEY_SPACE, "space"_L1},
    KeyName{KEY_F1, "F1"_L1},
    KeyName{KEY_F2, "F2"_L1},
    KeyName{KEY_F3, "F3"_L1},
    KeyName{KEY_F4, "F4"_L1},
    KeyName{KEY_F5, "F5"_L1},
    KeyName{KEY_F6, "F6"_L1},
    KeyName{KEY_F7, "F7"_L1},
    KeyName{KEY_F8, "F8"_L1},
    KeyName{KEY_F9, "F9"_L1},
    KeyName{KEY_F10, "F10"_L1},
    KeyName{KEY_F11, "F11"_L1},
    KeyName{KEY_F12, "F12"_L1},
    KeyName{KEY_F13, "F13"_L1},
    KeyName{KEY_F14, "F14"_L1},
    KeyName{KEY_F15, "F15"_L1},
    KeyName{KEY_F16, "F16"_L1},
    KeyName{KEY_F17, "F17"_L1},
    KeyName{KEY_F18, "F18"_L1},
    KeyName{KEY_F19, "F19"_L1},
    KeyName{KEY_F20, "F20"_L1},
    KeyName{KEY_KP0, "KP_0"_L1},
    KeyName{KEY_KP1, "KP_1"_L1},
    KeyName{KEY_KP2, "KP_2"_L1},
    KeyName{KEY_KP3, "KP_3"_L1},
    KeyName{KEY_KP4, "KP_4"_L1},
    KeyName{KEY_KP5, "KP_5"_L1},
    KeyName{KEY_KP6, "KP_6"_L1},
    KeyName{KEY_KP7, "KP_7"_L1},
    KeyName{KEY_KP8, "KP_8"_L1},
    KeyName{KEY_KP9, "KP_9"_L1},
    KeyName{KEY_KPDOT, "KP_Decimal"_L1},
    KeyName{KEY_KPMINUS, "KP_Subtract"_L1},
    KeyName{KEY_KPPLUS, "KP_Add"_L1},
    KeyName{KEY_KPSLASH, "KP_Divide"_L1},
    KeyName{KEY_KPENTER, "KP_Enter"_L1},
    KeyName{KEY_KPEQUAL, "KP_Equal"_L1},
    KeyName{KEY_102ND, "less"_L1},
    KeyName{KEY_HOME, "Home"_L1},
    KeyName{KEY_UP, "Up"_L1},
    KeyName{KEY_PAGEUP, "Page_Up"_L1},
    KeyName{KEY_LEFT, "Left"_L1},
    KeyName{KEY_RIGHT, "Right"_L1},
    KeyName{KEY_END, "End"_L1},
    KeyName{KEY_DOWN, "Down"_L1},
    KeyName{KEY_PAGEDOWN, "Page_Down"_L1},
    KeyName{KEY_INSERT, "Insert"_L1},
    KeyName{KEY_DELETE, "Delete"_L1},
    KeyName{KEY_SYSRQ, "Print"_L1},
    KeyName{KEY_SCROLLLOCK, "Scroll_Lock"_L1},
    KeyName{KEY_PAUSE, "Pause"_L1},
};

} // namespace

std::optional<QString> triggerOf(const HotKey &hotKey)
{
    const auto code = evdevCode(hotKey.keyCode);
    const auto *const key = std::ranges::find(keyNames, code, &KeyName::evdevCode);
    if (key == keyNames.end())
        return std::nullopt;
    QString trigger;
    for (const Modifier &modifier : modifiers) {
        if ((hotKey.modifiers & modifier.bit) != 0)
            trigger += modifier.name + u'+';
    }
    return trigger + key->name;
}

} // namespace lumacap::portal
