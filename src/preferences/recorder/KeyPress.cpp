#include "preferences/recorder/KeyPress.h"

#include "platform/VirtualKeys.h"
#include "preferences/storage/EventFlags.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace lumacap {
namespace {

/// In the native modifiers of an X server, and of a Wayland compositor's keyboard maps, which keep
/// the order of the eight that X has.
constexpr quint32 nativeCapsLock = 0x02;

struct ModifierFlag {
    Qt::KeyboardModifier modifier;
    std::uint64_t flag;
};
constexpr std::array modifierFlags{
    ModifierFlag{Qt::ShiftModifier, eventflag::shift},
    ModifierFlag{Qt::ControlModifier, eventflag::control},
    ModifierFlag{Qt::AltModifier, eventflag::option},
    ModifierFlag{Qt::MetaModifier, eventflag::command},
};

/// F1 to F20, Print, Scroll Lock and Pause; the arrows; Insert, Delete, Home, End and the pages.
constexpr std::array functionKeys{0x7AU, 0x78U, 0x63U, 0x76U, 0x60U, 0x61U, 0x62U, 0x64U, 0x65U,
                                  0x6DU, 0x67U, 0x6FU, 0x69U, 0x6BU, 0x71U, 0x6AU, 0x40U, 0x4FU,
                                  0x50U, 0x5AU, 0x80U, 0x81U, 0x82U, 0x7BU, 0x7CU, 0x7DU, 0x7EU,
                                  0x72U, 0x75U, 0x73U, 0x77U, 0x74U, 0x79U};

constexpr std::array keypadKeys{0x41U, 0x43U, 0x45U, 0x4BU, 0x4CU, 0x4EU, 0x51U, 0x52U, 0x53U,
                                0x54U, 0x55U, 0x56U, 0x57U, 0x58U, 0x59U, 0x5BU, 0x5CU, 0x5FU};

/// Command, Shift, Caps Lock, Option and Control, both of each, by their place on the keyboard.
constexpr std::array modifierKeys{0x36U, 0x37U, 0x38U, 0x39U, 0x3AU, 0x3BU, 0x3CU, 0x3DU, 0x3EU};

/// The same by what a layout makes of another key, as an X server and a Wayland compositor number
/// symbols: from the left Shift to the right Hyper, what chooses a level, Num Lock. Not the keys
/// that choose the next layout, which is what Command and Space may do.
struct SymbolRange {
    quint32 first;
    quint32 last;
};
constexpr std::array modifierSymbols{
    SymbolRange{0xFFE1, 0xFFEE},
    SymbolRange{0xFE01, 0xFE05},
    SymbolRange{0xFE11, 0xFE13},
    SymbolRange{0xFF7E, 0xFF7F},
};

template <class Keys, class Key>
bool isAmong(const Keys &keys, Key key)
{
    return std::ranges::find(keys, key) != keys.end();
}

bool isModifier(std::uint32_t keyCode, quint32 symbol)
{
    return isAmong(modifierKeys, keyCode)
        || std::ranges::any_of(modifierSymbols, [symbol](const SymbolRange &range) {
               return symbol >= range.first && symbol <= range.last;
           });
}

std::uint64_t flagsOf(const QKeyEvent &event, std::uint32_t keyCode)
{
    std::uint64_t flags = 0;
    for (const ModifierFlag &row : modifierFlags)
        flags |= event.modifiers().testFlag(row.modifier) ? row.flag : 0;
    if ((event.nativeModifiers() & nativeCapsLock) != 0)
        flags |= eventflag::capsLock;
    if (isAmong(functionKeys, keyCode))
        flags |= eventflag::function;
    if (isAmong(keypadKeys, keyCode))
        flags |= eventflag::numericPad;
    return flags;
}

} // namespace

std::optional<KeyPress> keyPressOf(const QKeyEvent &event)
{
    const quint32 scanCode = event.nativeScanCode();
    if (event.isAutoRepeat() || scanCode < scanCodeOffset)
        return std::nullopt;
    const auto keyCode = virtualKeyCode(scanCode - scanCodeOffset);
    if (!keyCode || isModifier(*keyCode, event.nativeVirtualKey()))
        return std::nullopt;
    return KeyPress{*keyCode, flagsOf(event, *keyCode)};
}

} // namespace lumacap
