#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <memory>
#include <optional>

struct xkb_keymap;

namespace lumacap::kwin {

/// A shortcut as KWin compares it with what is pressed: numbers of the toolkit's keys and
/// modifiers.
struct KeySequences {
    /// All of them are the shortcut, the one that its person knows it by first.
    QList<int> required;
    /// The same key while a lock is on, where that makes another one of it.
    QList<int> whileLocked;

    QList<int> all() const { return required + whileLocked; }

    friend bool operator==(const KeySequences &, const KeySequences &) = default;
};

/// What the keys of a keyboard are in each of its layouts.
class Keymap {
public:
    /// The map that a compositor sends as `text`; nothing for one that is none.
    static std::optional<Keymap> fromText(const QByteArray &text);
    /// What the system has for keyboards that nobody has described.
    static std::optional<Keymap> systemDefault();

    /// A key by its evdev code, held with the bits of `carbon`, where the layout of this number is
    /// the current one. Empty for a key that the map does not have.
    KeySequences sequences(std::uint32_t evdevCode, std::uint32_t carbonModifiers,
                           std::uint32_t layout) const;

private:
    struct Release {
        void operator()(xkb_keymap *keymap) const;
    };
    using Owned = std::unique_ptr<xkb_keymap, Release>;

    explicit Keymap(Owned keymap);
    static std::optional<Keymap> owning(Owned keymap);

    Owned m_keymap;
};

} // namespace lumacap::kwin
