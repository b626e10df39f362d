#pragma once

#include "harness/Input.h"
#include "harness/XConnection.h"

namespace lumacap::harness {

/// Input to an X server through its test extension.
class XInput final : public Input {
public:
    explicit XInput(const QByteArray &display);

    void moveTo(QPoint place) override;
    void button(Button button, Way way) override;
    void key(std::uint32_t code, Way way) override;

private:
    void fake(std::uint8_t type, std::uint8_t detail, QPoint place = {}) const;

    XConnection m_connection;
};

} // namespace lumacap::harness
