#pragma once

#include "platform/StatusItem.h"
#include "platform/freedesktop/tray/DBusMenu.h"
#include "platform/freedesktop/tray/StatusNotifierItem.h"
#include "platform/freedesktop/tray/TrayRegistration.h"

#include <QDBusConnection>
#include <QIcon>

#include <memory>

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace lumacap::freedesktop {

class XEmbedTrayIcon;

/// Whether the program may put windows of its own into the desktop's panel and over it.
enum class OwnWindows {
    Allowed, ///< X11, with a QApplication
    Refused, ///< Wayland, and where there is no display
};

/// The item in the tray: a StatusNotifierItem wherever a host for one is, and an icon in the
/// panel's X11 tray while there is none. A host that starts late, restarts or takes another's place
/// shows it again.
class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// `connection` is the item's own, with nothing else at /StatusNotifierItem and /MenuBar: hosts
    /// know the item by its connection and drop it when that ends. One without a bus behind it is
    /// no error.
    TrayStatusItem(QDBusConnection connection, OwnWindows ownWindows);
    Q_DISABLE_COPY_MOVE(TrayStatusItem)
    ~TrayStatusItem() override;

    void setImage(const QIcon &image, const QString &description) override;
    void setMenu(const QList<QAction *> &entries) override;

private:
    void follow();
    QMenu &popUpMenu();
    void popUp();

    QString m_connectionName;
    OwnWindows m_ownWindows;
    QIcon m_image;
    QList<QAction *> m_entries;
    DBusMenu m_menu;
    StatusNotifierItem m_item;
    TrayRegistration m_registration;
    /// The same entries, once a click has to be answered by us.
    std::unique_ptr<QMenu> m_popUpMenu;
    std::unique_ptr<XEmbedTrayIcon> m_xembed;
};

} // namespace lumacap::freedesktop
