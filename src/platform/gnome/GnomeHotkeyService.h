#pragma once

#include "platform/HotKeyBook.h"
#include "platform/gnome/Keybindings.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace lumacap::gnome {

/// What the presses of a shortcut do where they reach the program as a command line.
struct HotkeyCommand {
    std::uint32_t id = 0;
    /// The program's argument, small letters and hyphens.
    QString argument;
    /// For the person, in the desktop's list of shortcuts.
    QString title;
};

/// Shortcuts for a desktop that tells programs of none: it starts commands. Each shortcut starts
/// the program with its command, which that hands over to the agent, so that presses are not told
/// here.
class GnomeHotkeyService final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// `program` is the absolute path of the program. Removes what an earlier agent left.
    GnomeHotkeyService(std::unique_ptr<Keybindings> keybindings, QString program,
                       std::vector<HotkeyCommand> commands);
    Q_DISABLE_COPY_MOVE(GnomeHotkeyService)
    /// The shortcuts are out of the settings afterwards.
    ~GnomeHotkeyService() override;

    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    struct Registration : HotKeyRegistration {
        const HotkeyCommand *command = nullptr; ///< once it is live
    };

    void decide(HotKeyRef ref);
    const HotkeyCommand *commandFor(const HotKey &hotKey) const;
    bool isOurs(const KeyChord &chord) const;
    void add(const Registration &registration);

    std::unique_ptr<Keybindings> m_keybindings;
    QString m_program;
    std::vector<HotkeyCommand> m_commands;
    HotKeyBook<Registration> m_registrations;
    bool m_isSuspended = false;
};

} // namespace lumacap::gnome
