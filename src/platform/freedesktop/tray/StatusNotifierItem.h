#pragma once

#include "platform/freedesktop/tray/IconPixmaps.h"

#include <QDBusObjectPath>
#include <QObject>
#include <QString>

QT_BEGIN_NAMESPACE
class QIcon;
QT_END_NAMESPACE

namespace lumacap::freedesktop {

/// The text that appears over the item, (sa(iiay)ss).
struct ItemToolTip {
    QString iconName;
    IconPixmapList iconPixmaps;
    QString title;
    QString description;
};

QDBusArgument &operator<<(QDBusArgument &argument, const ItemToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, ItemToolTip &toolTip);

/// What a tray host asks of the item: org.kde.StatusNotifierItem. To be registered on a connection
/// with its scriptable contents, which are the protocol's and bear the protocol's names.
class StatusNotifierItem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ none CONSTANT)
    Q_PROPERTY(QString IconName READ none CONSTANT)
    Q_PROPERTY(lumacap::freedesktop::IconPixmapList IconPixmap READ image)
    Q_PROPERTY(QString IconAccessibleDesc READ description)
    Q_PROPERTY(QString OverlayIconName READ none CONSTANT)
    Q_PROPERTY(lumacap::freedesktop::IconPixmapList OverlayIconPixmap READ noImage CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ none CONSTANT)
    Q_PROPERTY(lumacap::freedesktop::IconPixmapList AttentionIconPixmap READ noImage CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ none CONSTANT)
    Q_PROPERTY(lumacap::freedesktop::ItemToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

public:
    /// `menu` is where the item's menu is found on the same connection.
    explicit StatusNotifierItem(QDBusObjectPath menu);

    /// `description` names the icon for assistive technology.
    void setImage(const QIcon &image, const QString &description);

    QString category() const;
    QString id() const;
    QString title() const;
    QString status() const;
    int windowId() const { return 0; }
    QString none() const { return {}; }
    const IconPixmapList &image() const { return m_image; }
    IconPixmapList noImage() const { return {}; }
    const QString &description() const { return m_description; }
    ItemToolTip toolTip() const;
    /// True: the item is nothing but its menu, which a host then opens on either click.
    bool itemIsMenu() const { return true; }
    const QDBusObjectPath &menu() const { return m_menu; }

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming)
    /// For hosts that open no menu of their own. The position is left unused: some send the panel's
    /// corner or nothing, and the pointer is at the item anyhow.
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    /// Nothing: a middle click and the wheel mean nothing to this item.
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void Scroll(int delta, const QString &orientation);
    /// What the window opened next shows to a Wayland compositor to be given the focus.
    Q_SCRIPTABLE void ProvideXdgActivationToken(const QString &token);

Q_SIGNALS:
    Q_SCRIPTABLE void NewTitle();
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewAttentionIcon();
    Q_SCRIPTABLE void NewOverlayIcon();
    Q_SCRIPTABLE void NewToolTip();
    Q_SCRIPTABLE void NewStatus(const QString &status);
    // NOLINTEND(readability-identifier-naming)

    /// A host was clicked on and leaves it to the program to show the menu.
    void menuWanted();

private:
    QDBusObjectPath m_menu;
    IconPixmapList m_image;
    QString m_description;
};

} // namespace lumacap::freedesktop

Q_DECLARE_METATYPE(lumacap::freedesktop::ItemToolTip)
