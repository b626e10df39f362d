#include "platform/kwin/hotkeys/ToolkitKeys.h"

#include <QChar>

#include <algorithm>
#include <array>

#include <xkbcommon/xkbcommon.h>

namespace lumacap::kwin {

namespace {

struct KeyRow {
    std::uint32_t symbol;
    Qt::Key key;
};

/// Symbols that are no characters.
constexpr std::array keyRows{
    KeyRow{XKB_KEY_Escape, Qt::Key_Escape},
    KeyRow{XKB_KEY_Tab, Qt::Key_Tab},
    KeyRow{XKB_KEY_ISO_Left_Tab, Qt::Key_Backtab},
    KeyRow{XKB_KEY_BackSpace, Qt::Key_Backspace},
    KeyRow{XKB_KEY_Return, Qt::Key_Return},
    KeyRow{XKB_KEY_Insert, Qt::Key_Insert},
    KeyRow{XKB_KEY_Delete, Qt::Key_Delete},
    KeyRow{XKB_KEY_Clear, Qt::Key_Clear},
    KeyRow{XKB_KEY_Pause, Qt::Key_Pause},
    KeyRow{XKB_KEY_Break, Qt::Key_Pause},
    KeyRow{XKB_KEY_Print, Qt::Key_Print},
    KeyRow{XKB_KEY_Sys_Req, Qt::Key_SysReq},
    KeyRow{XKB_KEY_Home, Qt::Key_Home},
    KeyRow{XKB_KEY_End, Qt::Key_End},
    KeyRow{XKB_KEY_Left, Qt::Key_Left},
    KeyRow{XKB_KEY_Up, Qt::Key_Up},
    KeyRow{XKB_KEY_Right, Qt::Key_Right},
    KeyRow{XKB_KEY_Down, Qt::Key_Down},
    KeyRow{XKB_KEY_Prior, Qt::Key_PageUp},
    KeyRow{XKB_KEY_Next, Qt::Key_PageDown},
    KeyRow{XKB_KEY_Caps_Lock, Qt::Key_CapsLock},
    KeyRow{XKB_KEY_Num_Lock, Qt::Key_NumLock},
    KeyRow{XKB_KEY_Scroll_Lock, Qt::Key_ScrollLock},
    KeyRow{XKB_KEY_Menu, Qt::Key_Menu},
    KeyRow{XKB_KEY_Help, Qt::Key_Help},
    KeyRow{XKB_KEY_KP_Space, Qt::Key_Space},
    KeyRow{XKB_KEY_KP_Tab, Qt::Key_Tab},
    KeyRow{XKB_KEY_KP_Enter, Qt::Key_Enter},
    KeyRow{XKB_KEY_KP_Home, Qt::Key_Home},
    KeyRow{XKB_KEY_KP_Left, Qt::Key_Left},
    KeyRow{XKB_KEY_KP_Up, Qt::Key_Up},
    KeyRow{XKB_KEY_KP_Right, Qt::Key_Right},
    KeyRow{XKB_KEY_KP_Down, Qt::Key_Down},
    KeyRow{XKB_KEY_KP_Prior, Qt::Key_PageUp},
    KeyRow{XKB_KEY_KP_Next, Qt::Key_PageDown},
    KeyRow{XKB_KEY_KP_End, Qt::Key_End},
    KeyRow{XKB_KEY_KP_Begin, Qt::Key_Clear},
    KeyRow{XKB_KEY_KP_Insert, Qt::Key_Insert},
    KeyRow{XKB_KEY_KP_Delete, Qt::Key_Delete},
    KeyRow{XKB_KEY_KP_Separator, Qt::Key_Comma},
    KeyRow{XKB_KEY_dead_grave, Qt::Key_Dead_Grave},
    KeyRow{XKB_KEY_dead_acute, Qt::Key_Dead_Acute},
    KeyRow{XKB_KEY_dead_circumflex, Qt::Key_Dead_Circumflex},
    KeyRow{XKB_KEY_dead_tilde, Qt::Key_Dead_Tilde},
    KeyRow{XKB_KEY_dead_diaeresis, Qt::Key_Dead_Diaeresis},
    KeyRow{XKB_KEY_dead_abovering, Qt::Key_Dead_Abovering},
    KeyRow{XKB_KEY_dead_caron, Qt::Key_Dead_Caron},
    KeyRow{XKB_KEY_dead_cedilla, Qt::Key_Dead_Cedilla},
};

/// The toolkit numbers the keys of characters by them, letters by their capitals, and knows the
/// digits of every script for the ten.
Qt::Key keyOfCharacter(char32_t character)
{
    constexpr char32_t largestOneUnit = 0xffff;
    if (character == 0 || character > largestOneUnit)
        return Qt::Key_unknown;
    const QChar unit(static_cast<char16_t>(character));
    if (unit.isDigit())
        return static_cast<Qt::Key>(Qt::Key_0 + unit.digitValue());
    const QChar capital = unit.toUpper();
    // Two letters of Latin 1 have capitals elsewhere, and stay.
    constexpr char16_t latin1 = 0xff;
    return static_cast<Qt::Key>(unit.unicode() <= latin1 && capital.unicode() > latin1
                                    ? unit.unicode()
                                    : capital.unicode());
}

} // namespace

Qt::Key toolkitKey(std::uint32_t symbol)
{
    if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F35)
        return static_cast<Qt::Key>(Qt::Key_F1 + (symbol - XKB_KEY_F1));
    const auto *const row = std::ranges::find(keyRows, symbol, &KeyRow::symbol);
    if (row != keyRows.end())
        return row->key;
    return keyOfCharacter(xkb_keysym_to_utf32(symbol));
}

bool isOfKeypad(std::uint32_t symbol)
{
    return symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
}

} // namespace lumacap::kwin
