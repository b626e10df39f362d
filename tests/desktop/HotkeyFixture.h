#pragma once

#include "SelectionFixture.h"
#include "harness/Clipboard.h"
#include "harness/Shortcuts.h"

#include <xcb/xcb.h>

#include <memory>

namespace lumacap::harness {

// Key codes of an X server, whatever the layout.
namespace key {
inline constexpr std::uint8_t one = 10;
inline constexpr std::uint8_t two = 11;
inline constexpr std::uint8_t letterA = 38;
inline constexpr std::uint8_t letterF = 41;
inline constexpr std::uint8_t controlLeft = 37;
inline constexpr std::uint8_t shiftLeft = 50;
inline constexpr std::uint8_t altLeft = 64;
inline constexpr std::uint8_t superLeft = 133;
} // namespace key

/// The designed shortcuts.
inline constexpr Shortcut fullScreenShortcut{key::one, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT};
inline constexpr Shortcut selectionShortcut{key::two, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT};

/// An agent with its shortcuts, on a desktop where somebody presses them.
struct HotkeyFixture : SelectionFixture {
    /// Starts both, and waits until both shortcuts are live.
    void start();
    /// Starts the agent, and waits until `shortcut` is live.
    void startAgentWith(const Shortcut &shortcut);
    QByteArray display() const { return desktop->server().display(); }

    /// Presses and releases `code` while `modifiers` are held, all by code.
    void pressKeys(const std::vector<std::uint8_t> &modifiers, std::uint8_t code);
    void holdKeys(const std::vector<std::uint8_t> &keys);
    void releaseKeys(const std::vector<std::uint8_t> &keys);
    void pressFullScreen() { pressKeys({key::controlLeft, key::shiftLeft}, key::one); }
    void pressSelection() { pressKeys({key::controlLeft, key::shiftLeft}, key::two); }

    /// Whether there have been exactly `number` captures, once as many have been taken.
    testing::AssertionResult captures(int number);
    /// Presses the shortcut of a selection and takes what is picked.
    void selectByShortcut();

    std::unique_ptr<ClipboardWatch> clipboard; ///< from when the agent was ready
};

} // namespace lumacap::harness
