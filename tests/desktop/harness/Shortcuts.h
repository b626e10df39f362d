#pragma once

#include "harness/XConnection.h"

#include <cstdint>

namespace lumacap::harness {

/// A shortcut as an X server numbers it.
struct Shortcut {
    std::uint8_t key = 0;
    std::uint16_t modifiers = 0;
};

/// Whether no client has it. Nobody can ask for it at that moment.
bool isFree(const QByteArray &display, const Shortcut &shortcut);

/// Another program's shortcut, until the object is gone.
class HeldShortcut {
public:
    /// Takes it; throws when somebody else has it.
    HeldShortcut(const QByteArray &display, const Shortcut &shortcut);

    /// How often it was pressed, with the repetitions of a key that is held.
    int presses();

private:
    XConnection m_connection;
    int m_presses = 0;
};

} // namespace lumacap::harness
