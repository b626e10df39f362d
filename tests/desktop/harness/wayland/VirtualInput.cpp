#include "harness/wayland/VirtualInput.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <linux/input-event-codes.h>
#include <protocols/virtual-keyboard.h>
#include <protocols/wlr-virtual-pointer-unstable-v1.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

namespace lumacap::harness {

namespace {

constexpr std::uint32_t xkbOffset = 8; // what XKB numbers keys by, less the evdev code
constexpr std::array buttonCodes{BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};

void sendKeymap(zwp_virtual_keyboard_v1 *keyboard, xkb_keymap *keymap)
{
    const std::unique_ptr<char, decltype(&std::free)> text(
        xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1), &std::free);
    const std::size_t size = std::char_traits<char>::length(text.get()) + 1;
    const int file = memfd_create("keymap", MFD_CLOEXEC);
    if (write(file, text.get(), size) != static_cast<ssize_t>(size))
        throw std::runtime_error("no room for a keymap");
    zwp_virtual_keyboard_v1_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   static_cast<std::uint32_t>(size));
    close(file);
}

} // namespace

void VirtualInput::Unreference::operator()(xkb_context *context) const
{
    xkb_context_unref(context);
}

void VirtualInput::Unreference::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

void VirtualInput::Unreference::operator()(xkb_state *state) const
{
    xkb_state_unref(state);
}

VirtualInput::VirtualInput(const QString &socket, const QRect &layout,
                           const std::string &keyboardLayout)
    : m_compositor(socket)
    , m_layout(layout)
    , m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS))
{
    const xkb_rule_names names{.rules = "evdev",
                               .model = "pc105",
                               .layout = keyboardLayout.c_str(),
                               .variant = nullptr,
                               .options = nullptr};
    m_keymap.reset(xkb_keymap_new_from_names(m_context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    m_state.reset(xkb_state_new(m_keymap.get()));
    auto *const seat = m_compositor.bind<wl_seat>(wl_seat_interface);
    auto *const pointers = m_compositor.bind<zwlr_virtual_pointer_manager_v1>(
        zwlr_virtual_pointer_manager_v1_interface);
    auto *const keyboards = m_compositor.bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface);
    if (seat == nullptr || pointers == nullptr || keyboards == nullptr)
        throw std::runtime_error("the compositor takes no virtual input");
    m_pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers, seat);
    m_keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards, seat);
    sendKeymap(m_keyboard, m_keymap.get());
    zwlr_virtual_pointer_manager_v1_destroy(pointers);
    zwp_virtual_keyboard_manager_v1_destroy(keyboards);
    wl_seat_destroy(seat);
    m_compositor.finish();
}

VirtualInput::~VirtualInput()
{
    zwlr_virtual_pointer_v1_destroy(m_pointer);
    zwp_virtual_keyboard_v1_destroy(m_keyboard);
    wl_display_flush(m_compositor.raw());
}

void VirtualInput::moveTo(QPoint place)
{
    const QPoint inLayout = place - m_layout.topLeft();
    zwlr_virtual_pointer_v1_motion_absolute(
        m_pointer, ++m_time, static_cast<std::uint32_t>(inLayout.x()),
        static_cast<std::uint32_t>(inLayout.y()), static_cast<std::uint32_t>(m_layout.width()),
        static_cast<std::uint32_t>(m_layout.height()));
    zwlr_virtual_pointer_v1_frame(m_pointer);
    m_compositor.finish();
}

void VirtualInput::button(Button button, Way way)
{
    const auto code = static_cast<std::uint32_t>(buttonCodes.at(static_cast<std::size_t>(button)));
    zwlr_virtual_pointer_v1_button(m_pointer, ++m_time, code,
                                   way == Way::Down ? WL_POINTER_BUTTON_STATE_PRESSED
                                                    : WL_POINTER_BUTTON_STATE_RELEASED);
    zwlr_virtual_pointer_v1_frame(m_pointer);
    m_compositor.finish();
}

void VirtualInput::key(std::uint32_t code, Way way)
{
    xkb_state_update_key(m_state.get(), code + xkbOffset,
                         way == Way::Down ? XKB_KEY_DOWN : XKB_KEY_UP);
    zwp_virtual_keyboard_v1_key(m_keyboard, ++m_time, code,
                                way == Way::Down ? WL_KEYBOARD_KEY_STATE_PRESSED
                                                 : WL_KEYBOARD_KEY_STATE_RELEASED);
    sendModifiers();
}

void VirtualInput::switchTo(std::uint32_t group)
{
    xkb_state_update_mask(m_state.get(), 0, 0, 0, 0, 0, group);
    sendModifiers();
}

void VirtualInput::sendModifiers()
{
    xkb_state *const state = m_state.get();
    zwp_virtual_keyboard_v1_modifiers(
        m_keyboard, xkb_state_serialize_mods(state, XKB_STATE_MODS_DEPRESSED),
        xkb_state_serialize_mods(state, XKB_STATE_MODS_LATCHED),
        xkb_state_serialize_mods(state, XKB_STATE_MODS_LOCKED),
        xkb_state_serialize_layout(state, XKB_STATE_LAYOUT_EFFECTIVE));
    m_compositor.finish();
}

} // namespace lumacap::harness
