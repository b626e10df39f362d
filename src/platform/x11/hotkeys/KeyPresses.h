#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace lumacap::x11 {

/// Tells the press of a key by a finger from what else comes of it: the repetitions of a key that
/// is held, and a second report of the same press.
///
/// A repetition is a release and a press at the same moment, also when the server has told nothing
/// of the key before. Moments are the server's, in milliseconds.
class KeyPresses {
public:
    /// Whether the key was pressed; to be told every press there is.
    bool isNew(std::uint8_t key, std::uint32_t time)
    {
        auto &[pressed, released] = m_moments.at(key);
        const bool isKnown = pressed == time || released == time;
        pressed = time;
        return !isKnown;
    }
    void release(std::uint8_t key, std::uint32_t time) { m_moments.at(key).released = time; }

private:
    struct Moments {
        std::optional<std::uint32_t> pressed; ///< last
        std::optional<std::uint32_t> released; ///< last
    };
    std::array<Moments, 256> m_moments;
};

} // namespace lumacap::x11
