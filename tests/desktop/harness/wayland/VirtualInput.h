#pragma once

#include "harness/Input.h"
#include "harness/wayland/Compositor.h"

#include <QRect>

#include <memory>
#include <string>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;
struct zwlr_virtual_pointer_v1;
struct zwp_virtual_keyboard_v1;

namespace lumacap::harness {

/// A mouse and a keyboard plugged into a wlroots compositor until the object is gone.
class VirtualInput final : public Input {
public:
    /// `layout` is what all outputs lie in, in the compositor's units; `keyboardLayout` as XKB
    /// names it: "us", "fr", "us,de".
    VirtualInput(const QString &socket, const QRect &layout,
                 const std::string &keyboardLayout = "us");
    Q_DISABLE_COPY_MOVE(VirtualInput)
    ~VirtualInput() override;

    void moveTo(QPoint place) override;
    void button(Button button, Way way) override;
    void key(std::uint32_t code, Way way) override;
    /// Makes the `group`th of its layouts the current one.
    void switchTo(std::uint32_t group);

private:
    struct Unreference {
        void operator()(xkb_context *context) const;
        void operator()(xkb_keymap *keymap) const;
        void operator()(xkb_state *state) const;
    };

    void sendModifiers();

    Compositor m_compositor;
    QRect m_layout;
    std::unique_ptr<xkb_context, Unreference> m_context;
    std::unique_ptr<xkb_keymap, Unreference> m_keymap;
    std::unique_ptr<xkb_state, Unreference> m_state;
    zwlr_virtual_pointer_v1 *m_pointer = nullptr;
    zwp_virtual_keyboard_v1 *m_keyboard = nullptr;
    std::uint32_t m_time = 0; // milliseconds, one a step
};

} // namespace lumacap::harness
