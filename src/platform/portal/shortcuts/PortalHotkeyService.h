#pragma once

#include "platform/HotKeyBook.h"
#include "platform/portal/Portal.h"
#include "platform/portal/shortcuts/ShortcutSession.h"

#include <QCoroTask>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QPointer>

#include <map>
#include <memory>

namespace lumacap::portal {

/// What a desktop tells the person that a shortcut does, by its number.
using ShortcutTexts = std::map<std::uint32_t, QString>;

/// Shortcuts that the desktop's portal gives out. It may give other keys than those asked for, and
/// the person may change them in the desktop's settings.
class PortalHotkeyService final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// `connection` is of its own.
    PortalHotkeyService(QDBusConnection connection, QString applicationId, ShortcutTexts texts);
    Q_DISABLE_COPY_MOVE(PortalHotkeyService)
    ~PortalHotkeyService() override;

    /// Whether the desktop implements shortcuts behind its portal; in bounded time.
    QCoro::Task<bool> isOffered();

    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    void bindSoon();
    void bindAll();
    QCoro::Task<> bind(QPointer<QObject> attempt);
    QList<BoundShortcut> wanted() const;
    void conclude(const QStringList &bound);
    void giveUp();
    void followSession();
    void press(const QString &id);

    Portal m_portal;
    ShortcutTexts m_texts;
    PressedHandler m_onPressed;
    HotKeyBook<HotKeyRegistration> m_registrations;
    bool m_isSuspended = false;
    bool m_isBindingSoon = false;
    QDBusServiceWatcher m_portals;
    std::unique_ptr<QObject> m_attempt; ///< to bind them; what it began ends with it
    std::unique_ptr<ShortcutSession> m_session;
};

} // namespace lumacap::portal
