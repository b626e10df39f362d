#pragma once

#include <cstdint>
#include <optional>

class QKeyEvent;

namespace lumacap {

/// A press of a key as the recorder sees it.
struct KeyPress {
    /// macOS virtual key code.
    std::uint32_t keyCode = 0;
    /// A mask of the bits in `eventflag`.
    std::uint64_t flags = 0;

    friend bool operator==(const KeyPress &, const KeyPress &) = default;
};

/// Nothing for what is no press of its own: a modifier alone, the repetition of a key that is held,
/// a key without a virtual code. AltGr is no modifier: it chooses a symbol.
std::optional<KeyPress> keyPressOf(const QKeyEvent &event);

} // namespace lumacap
