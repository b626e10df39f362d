#include "platform/freedesktop/tray/TrayStatusItem.h"

#include "platform/freedesktop/tray/XEmbedTrayIcon.h"

#include <QAction>
#include <QCursor>
#include <QMenu>

#include <utility>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

const auto menuPath = u"/MenuBar"_s;

/// The connection with both objects on it, for whoever then tells a host of them.
QDBusConnection withObjects(QDBusConnection connection, DBusMenu &menu, StatusNotifierItem &item)
{
    if (connection.isConnected()) {
        // Refused only when something is there already, which the connection's contract excludes.
        connection.registerObject(menuPath, &menu, QDBusConnection::ExportScriptableContents);
        connection.registerObject(u"/StatusNotifierItem"_s, &item,
                                  QDBusConnection::ExportScriptableContents);
    }
    return connection;
}

} // namespace

TrayStatusItem::TrayStatusItem(QDBusConnection connection, OwnWindows ownWindows)
    : m_connectionName(connection.name())
    , m_ownWindows(ownWindows)
    , m_item(QDBusObjectPath(menuPath))
    , m_registration(withObjects(std::move(connection), m_menu, m_item))
{
    connect(&m_item, &StatusNotifierItem::menuWanted, this, &TrayStatusItem::popUp);
    connect(&m_registration, &TrayRegistration::placeChanged, this, &TrayStatusItem::follow);
}

TrayStatusItem::~TrayStatusItem()
{
    QDBusConnection::disconnectFromBus(m_connectionName); // which tells the hosts that it has gone
}

void TrayStatusItem::setImage(const QIcon &image, const QString &description)
{
    m_image = image;
    m_item.setImage(image, description);
    if (m_xembed)
        m_xembed->setImage(image);
    follow();
}

void TrayStatusItem::setMenu(const QList<QAction *> &entries)
{
    m_entries = entries;
    m_menu.setEntries(entries);
    if (m_popUpMenu) {
        for (QAction *const action : m_popUpMenu->actions())
            m_popUpMenu->removeAction(action);
        m_popUpMenu->addActions(entries);
    }
    follow();
}

void TrayStatusItem::follow()
{
    if (m_registration.place() == TrayPlace::Hosted) {
        if (m_xembed)
            m_xembed->hide();
        return;
    }
    // While the desktop has not answered, the icon of before stays; the first is not made.
    if (m_ownWindows == OwnWindows::Refused || m_registration.place() == TrayPlace::Unknown
        || m_image.isNull() || m_entries.isEmpty())
        return;
    if (!m_xembed) {
        m_xembed = std::make_unique<XEmbedTrayIcon>(popUpMenu());
        m_xembed->setImage(m_image);
    }
    m_xembed->show();
}

QMenu &TrayStatusItem::popUpMenu()
{
    if (!m_popUpMenu) {
        m_popUpMenu = std::make_unique<QMenu>();
        m_popUpMenu->addActions(m_entries);
    }
    return *m_popUpMenu;
}

void TrayStatusItem::popUp()
{
    // On Wayland a program cannot place a menu at a panel it does not own, and such a click stays
    // without effect; the hosts there open the menu themselves, as ItemIsMenu asks them to.
    if (m_ownWindows == OwnWindows::Allowed && !m_entries.isEmpty())
        popUpMenu().popup(QCursor::pos());
}

} // namespace lumacap::freedesktop
