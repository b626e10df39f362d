#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace lumacap::sway {

/// Modifiers of a key, as the compositor numbers them.
namespace modifier {
inline constexpr std::uint32_t shift = 1U << 0;
inline constexpr std::uint32_t control = 1U << 2;
inline constexpr std::uint32_t alt = 1U << 3;
inline constexpr std::uint32_t logo = 1U << 6;
} // namespace modifier

/// One key with modifiers that the person's own configuration leads somewhere.
struct ConfiguredKey {
    enum class By { Symbol, Code };

    By by = By::Symbol;
    std::uint32_t modifiers = 0;
    /// The symbol's name, or the key's code as X counts.
    QString key;

    friend bool operator==(const ConfiguredKey &, const ConfiguredKey &) = default;
};

/// The keys that `text`, the configuration in `path`, binds while no mode of its own is entered,
/// with what it includes read from the disk. What other programs bound since is not in it, nor is
/// what a command makes up that the configuration has the shell run.
std::vector<ConfiguredKey> configuredKeys(const QString &text, const QString &path);

} // namespace lumacap::sway
