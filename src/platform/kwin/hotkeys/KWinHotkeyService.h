#pragma once

#include "platform/HotKeyBook.h"
#include "platform/kwin/hotkeys/GlobalShortcuts.h"
#include "platform/kwin/hotkeys/Keyboard.h"

#include <QCoroTask>
#include <QObject>

#include <map>

namespace lumacap::kwin {

/// Shortcuts that KWin gives out, under the program's name in the desktop's settings.
class KWinHotkeyService final : public QObject, public HotkeyService {
public:
    /// What the settings call a shortcut, by its number.
    using Actions = std::map<std::uint32_t, ShortcutAction>;

    /// Borrows `connection`, which outlives the object; KWin is on `bus`.
    KWinHotkeyService(wayland::Connection &connection, QDBusConnection bus, Actions actions);
    Q_DISABLE_COPY_MOVE(KWinHotkeyService)
    ~KWinHotkeyService() override;

    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    struct Registration : HotKeyRegistration {
        QList<int> keys; ///< asked for; empty for none
        bool isLive = false;
        int attempt = 0; ///< counted so that a late answer is known for one
    };

    bool isReady() const;
    void askForAll();
    void askForChanged();
    QCoro::Task<> ask(HotKeyRef ref);
    void conclude(HotKeyRef ref, int attempt, HotKeyState state);
    void giveUp(Registration &registration);
    KeySequences sequencesOf(const HotKey &hotKey) const;
    bool isTaken(HotKeyRef ref, const QList<int> &keys) const;
    ShortcutAction actionOf(std::uint32_t id) const;
    void press(const QString &action);

    Actions m_actions;
    Keyboard m_keyboard;
    GlobalShortcuts m_shortcuts;
    HotKeyBook<Registration> m_registrations;
    PressedHandler m_onPressed;
    bool m_isSuspended = false;
};

} // namespace lumacap::kwin
