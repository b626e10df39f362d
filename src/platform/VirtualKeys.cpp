#include "platform/VirtualKeys.h"

#include <algorithm>
#include <array>

#include <linux/input-event-codes.h>

namespace lumacap {
namespace {

struct VirtualKey {
    std::uint32_t virtualKeyCode;
    std::uint32_t evdevCode;
};

/// The keys of a full keyboard but the media keys, row by row. Num Lock stands where the other
/// numbering has a key that clears, Insert where it has one for help.
constexpr std::array keys{
    VirtualKey{0x35, KEY_ESC},        VirtualKey{0x12, KEY_1},
    VirtualKey{0x13, KEY_2},          VirtualKey{0x14, KEY_3},
    VirtualKey{0x15, KEY_4},          VirtualKey{0x17, KEY_5},
    VirtualKey{0x16, KEY_6},          VirtualKey{0x1A, KEY_7},
    VirtualKey{0x1C, KEY_8},          VirtualKey{0x19, KEY_9},
    VirtualKey{0x1D, KEY_0},          VirtualKey{0x1B, KEY_MINUS},
    VirtualKey{0x18, KEY_EQUAL},      VirtualKey{0x33, KEY_BACKSPACE},
    VirtualKey{0x30, KEY_TAB},        VirtualKey{0x0C, KEY_Q},
    VirtualKey{0x0D, KEY_W},          VirtualKey{0x0E, KEY_E},
    VirtualKey{0x0F, KEY_R},          VirtualKey{0x11, KEY_T},
    VirtualKey{0x10, KEY_Y},          VirtualKey{0x20, KEY_U},
    VirtualKey{0x22, KEY_I},          VirtualKey{0x1F, KEY_O},
    VirtualKey{0x23, KEY_P},          VirtualKey{0x21, KEY_LEFTBRACE},
    VirtualKey{0x1E, KEY_RIGHTBRACE}, VirtualKey{0x24, KEY_ENTER},
    VirtualKey{0x3B, KEY_LEFTCTRL},   VirtualKey{0x00, KEY_A},
    VirtualKey{0x01, KEY_S},          VirtualKey{0x02, KEY_D},
    VirtualKey{0x03, KEY_F},          VirtualKey{0x05, KEY_G},
    VirtualKey{0x04, KEY_H},          VirtualKey{0x26, KEY_J},
    VirtualKey{0x28, KEY_K},          VirtualKey{0x25, KEY_L},
    VirtualKey{0x29, KEY_SEMICOLON},  VirtualKey{0x27, KEY_APOSTROPHE},
    VirtualKey{0x32, KEY_GRAVE},      VirtualKey{0x38, KEY_LEFTSHIFT},
    VirtualKey{0x2A, KEY_BACKSLASH},  VirtualKey{0x06, KEY_Z},
    VirtualKey{0x07, KEY_X},          VirtualKey{0x08, KEY_C},
    VirtualKey{0x09, KEY_V},          VirtualKey{0x0B, KEY_B},
    VirtualKey{0x2D, KEY_N},          VirtualKey{0x2E, KEY_M},
    VirtualKey{0x2B, KEY_COMMA},      VirtualKey{0x2F, KEY_DOT},
    VirtualKey{0x2C, KEY_SLASH},      VirtualKey{0x3C, KEY_RIGHTSHIFT},
    VirtualKey{0x43, KEY_KPASTERISK}, VirtualKey{0x3A, KEY_LEFTALT},
    VirtualKey{0x31, KEY_SPACE},      VirtualKey{0x39, KEY_CAPSLOCK},
    VirtualKey{0x7A, KEY_F1},         VirtualKey{0x78, KEY_F2},
    VirtualKey{0x63, KEY_F3},         VirtualKey{0x76, KEY_F4},
    VirtualKey{0x60, KEY_F5},         VirtualKey{0x61, KEY_F6},
    VirtualKey{0x62, KEY_F7},         VirtualKey{0x64, KEY_F8},
    VirtualKey{0x65, KEY_F9},         VirtualKey{0x6D, KEY_F10},
    VirtualKey{0x47, KEY_NUMLOCK},    VirtualKey{0x59, KEY_KP7},
    VirtualKey{0x5B, KEY_KP8},        VirtualKey{0x5C, KEY_KP9},
    VirtualKey{0x4E, KEY_KPMINUS},    VirtualKey{0x56, KEY_KP4},
    VirtualKey{0x57, KEY_KP5},        VirtualKey{0x58, KEY_KP6},
    VirtualKey{0x45, KEY_KPPLUS},     VirtualKey{0x53, KEY_KP1},
    VirtualKey{0x54, KEY_KP2},        VirtualKey{0x55, KEY_KP3},
    VirtualKey{0x52, KEY_KP0},        VirtualKey{0x41, KEY_KPDOT},
    VirtualKey{0x0A, KEY_102ND},      VirtualKey{0x67, KEY_F11},
    VirtualKey{0x6F, KEY_F12},        VirtualKey{0x5E, KEY_RO},
    VirtualKey{0x4C, KEY_KPENTER},    VirtualKey{0x3E, KEY_RIGHTCTRL},
    VirtualKey{0x4B, KEY_KPSLASH},    VirtualKey{0x3D, KEY_RIGHTALT},
    VirtualKey{0x73, KEY_HOME},       VirtualKey{0x7E, KEY_UP},
    VirtualKey{0x74, KEY_PAGEUP},     VirtualKey{0x7B, KEY_LEFT},
    VirtualKey{0x7C, KEY_RIGHT},      VirtualKey{0x77, KEY_END},
    VirtualKey{0x7D, KEY_DOWN},       VirtualKey{0x79, KEY_PAGEDOWN},
    VirtualKey{0x72, KEY_INSERT},     VirtualKey{0x75, KEY_DELETE},
    VirtualKey{0x51, KEY_KPEQUAL},    VirtualKey{0x5F, KEY_KPCOMMA},
    VirtualKey{0x68, KEY_HANGEUL},    VirtualKey{0x66, KEY_HANJA},
    VirtualKey{0x5D, KEY_YEN},        VirtualKey{0x37, KEY_LEFTMETA},
    VirtualKey{0x36, KEY_RIGHTMETA},  VirtualKey{0x6E, KEY_COMPOSE},
    VirtualKey{0x80, KEY_SYSRQ},      VirtualKey{0x81, KEY_SCROLLLOCK},
    VirtualKey{0x82, KEY_PAUSE},      VirtualKey{0x69, KEY_F13},
    VirtualKey{0x6B, KEY_F14},        VirtualKey{0x71, KEY_F15},
    VirtualKey{0x6A, KEY_F16},        VirtualKey{0x40, KEY_F17},
    VirtualKey{0x4F, KEY_F18},        VirtualKey{0x50, KEY_F19},
    VirtualKey{0x5A, KEY_F20},
};

template <class From>
const VirtualKey *find(std::uint32_t code, From from)
{
    const auto *const key = std::ranges::find(keys, code, from);
    return key == keys.end() ? nullptr : key;
}

} // namespace

std::optional<std::uint32_t> evdevCode(std::uint32_t virtualKeyCode)
{
    const auto *const key = find(virtualKeyCode, &VirtualKey::virtualKeyCode);
    return key == nullptr ? std::nullopt : std::optional(key->evdevCode);
}

std::optional<std::uint32_t> virtualKeyCode(std::uint32_t evdevCode)
{
    const auto *const key = find(evdevCode, &VirtualKey::evdevCode);
    return key == nullptr ? std::nullopt : std::optional(key->virtualKeyCode);
}

} // namespace lumacap
