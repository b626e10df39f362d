#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdint>

namespace lumacap::gnome {

/// A physical key, by its evdev code, and a mask of the modifiers in `carbon` that are held with
/// it.
struct KeyChord {
    std::uint32_t key = 0;
    std::uint32_t modifiers = 0;

    friend bool operator==(const KeyChord &, const KeyChord &) = default;
};

/// A command line that keys start.
struct CommandBinding {
    /// For the person, in the list of shortcuts.
    QString name;
    /// Words as a shell reads them.
    QString command;
    KeyChord chord;
};

/// The shortcuts in the person's GNOME settings. Ours stand beside those of the person, which are
/// left as they are.
class Keybindings {
public:
    Keybindings() = default;
    Q_DISABLE_COPY_MOVE(Keybindings)
    virtual ~Keybindings() = default;

    /// Whether the person or the desktop has given the keys to something else.
    virtual bool isTaken(const KeyChord &chord) const = 0;
    /// Adds one of ours, or puts it in the place of the earlier one of this `id`: small letters and
    /// hyphens.
    virtual void add(const QString &id, const CommandBinding &binding) = 0;
    virtual void remove(const QString &id) = 0;
    /// Removes all of ours, also those that an agent left that was killed.
    virtual void removeAll() = 0;
    /// Comes back when all that was changed is stored. For the end of the program alone.
    virtual void store() = 0;
};

} // namespace lumacap::gnome
