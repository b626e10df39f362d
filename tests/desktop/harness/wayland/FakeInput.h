#pragma once

#include "harness/Input.h"
#include "harness/wayland/Compositor.h"

struct org_kde_kwin_fake_input;

namespace lumacap::harness {

/// Input to KWin, by the protocol that it has for tests of desktops.
class FakeInput final : public Input {
public:
    explicit FakeInput(const QString &socket);
    Q_DISABLE_COPY_MOVE(FakeInput)
    ~FakeInput() override;

    void moveTo(QPoint place) override;
    void button(Button button, Way way) override;
    void key(std::uint32_t code, Way way) override;

private:
    Compositor m_compositor;
    org_kde_kwin_fake_input *m_input = nullptr;
};

} // namespace lumacap::harness
