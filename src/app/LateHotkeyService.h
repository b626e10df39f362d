#pragma once

#include "platform/HotKeyBook.h"

#include <QCoroTask>
#include <QObject>

#include <memory>
#include <optional>

namespace lumacap {

/// For a desktop that tells only after a while which service of shortcuts it has: keeps what is
/// registered until then, and is that service from then on.
class LateHotkeyService final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// `choice` ends in bounded time, and answers a service.
    explicit LateHotkeyService(QCoro::Task<std::unique_ptr<HotkeyService>> choice);
    Q_DISABLE_COPY_MOVE(LateHotkeyService)
    ~LateHotkeyService() override = default;

    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    struct Registration : HotKeyRegistration {
        std::optional<HotKeyRef> chosenRef; ///< once the service has it
    };

    QCoro::Task<> await(QCoro::Task<std::unique_ptr<HotkeyService>> choice);
    void adopt(std::unique_ptr<HotkeyService> chosen);
    void pass(HotKeyRef ref);

    HotKeyBook<Registration> m_registrations;
    PressedHandler m_onPressed;
    bool m_isSuspended = false;
    std::unique_ptr<HotkeyService> m_chosen; // null until the desktop has told
};

} // namespace lumacap
