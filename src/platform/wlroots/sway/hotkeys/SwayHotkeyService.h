#pragma once

#include "platform/HotKeyBook.h"
#include "platform/wayland/SeatKeyboard.h"
#include "platform/wlroots/sway/Ipc.h"
#include "platform/wlroots/sway/hotkeys/ConfiguredKeys.h"

#include <QCoroTask>
#include <QObject>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace lumacap::sway {

/// Shortcuts that are bindings of the compositor's which do nothing but tell of themselves.
///
/// The person's own bindings come first. A key that the configuration binds is left alone and
/// answered as not live. Ours are of the kind that holds while a window inhibits shortcuts, which
/// hardly any other is: so they never take the place of another, and of two for the same key code
/// the earlier one, which is never ours at the start of a session or after a reload, is run.
class SwayHotkeyService final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// Talks to the compositor at `path`. `keyboard` may be null, where no keyboard is known.
    explicit SwayHotkeyService(std::unique_ptr<wayland::SeatKeyboard> keyboard,
                               const QString &path = Ipc::path());
    /// Leaves no binding behind, and waits for that, though not for long.
    ~SwayHotkeyService() override;
    Q_DISABLE_COPY_MOVE(SwayHotkeyService)

    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    /// A key by its code as X counts, with the compositor's modifiers.
    struct Chord {
        std::uint32_t code = 0;
        std::uint32_t modifiers = 0;

        friend bool operator==(const Chord &, const Chord &) = default;
    };
    struct Registration : HotKeyRegistration {
        std::optional<Chord> bound; ///< or asked for
        int attempt = 0; ///< to bind it, counted so that a late answer is known for one
    };

    static std::optional<Chord> chordOf(const HotKey &hotKey);
    static QString keysOf(Chord chord);
    static QString commandOf(HotKeyRef ref);

    QCoro::Task<> learnConfiguration();
    void askForAll();
    void ask(HotKeyRef ref);
    void bind(HotKeyRef ref, Chord chord);
    void giveUp(Registration &registration);
    void conclude(HotKeyRef ref, int attempt, HotKeyState state);
    void concludeLater(HotKeyRef ref, int attempt, HotKeyState state);
    bool isConfigured(Chord chord) const;
    bool isTaken(Chord chord) const;
    QString inUsualMode(const QString &command) const;
    void handle(Event event, const QJsonObject &facts);
    void startAnew();
    void press(const QString &command);

    std::unique_ptr<wayland::SeatKeyboard> m_keyboard;
    HotKeyBook<Registration> m_registrations;
    PressedHandler m_onPressed;
    QString m_mode; // the compositor's, which new bindings go into
    std::optional<std::vector<ConfiguredKey>> m_configured; // nothing where nobody tells
    bool m_isReading = true; // the configuration, and asks for no key before
    int m_readings = 0; // counted so that a late one is known for one
    bool m_isSuspended = false;
    Ipc m_ipc; // ends first, as it tells the others of its end
};

} // namespace lumacap::sway
