#pragma once

#include <QCoroTask>

#include <cstdint>

namespace lumacap::xcb {
class Connection;
}

namespace lumacap::x11 {

/// A key with the modifiers held with it, as the server numbers both.
struct KeyChord {
    std::uint8_t key = 0;
    std::uint8_t modifiers = 0;

    friend bool operator==(const KeyChord &, const KeyChord &) = default;
};

/// Whether a chord leads to a client of the server from now on.
enum class Grab { Granted, Refused };

/// Asks for `chord` with every combination of the modifiers `locks`. Refused as a whole when
/// another client has one of them; none is ours then, once `ungrab` was called.
QCoro::Task<Grab> grab(xcb::Connection &connection, KeyChord chord, std::uint8_t locks);

/// Gives up what `grab` was asked for, granted or not.
void ungrab(xcb::Connection &connection, KeyChord chord, std::uint8_t locks);

} // namespace lumacap::x11
