#include "platform/freedesktop/tray/StatusNotifierItem.h"

#include <QDBusMetaType>

#include <utility>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

QDBusArgument &operator<<(QDBusArgument &argument, const ItemToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmaps << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ItemToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmaps >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

StatusNotifierItem::StatusNotifierItem(QDBusObjectPath menu)
    : m_menu(std::move(menu))
{
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<IconPixmapList>();
    qDBusRegisterMetaType<ItemToolTip>();
}

void StatusNotifierItem::setImage(const QIcon &image, const QString &description)
{
    m_image = iconPixmaps(image);
    m_description = description;
    Q_EMIT NewIcon();
}

QString StatusNotifierItem::category() const
{
    return u"ApplicationStatus"_s;
}

QString StatusNotifierItem::id() const
{
    return u"app.lumacap.Lumacap"_s;
}

QString StatusNotifierItem::title() const
{
    return u"Lumacap"_s;
}

QString StatusNotifierItem::status() const
{
    return u"Active"_s;
}

ItemToolTip StatusNotifierItem::toolTip() const
{
    return {.iconName = {}, .iconPixmaps = {}, .title = title(), .description = {}};
}

void StatusNotifierItem::Activate(int /*x*/, int /*y*/)
{
    Q_EMIT menuWanted();
}

void StatusNotifierItem::ContextMenu(int /*x*/, int /*y*/)
{
    Q_EMIT menuWanted();
}

void StatusNotifierItem::SecondaryActivate(int /*x*/, int /*y*/) { }

void StatusNotifierItem::Scroll(int /*delta*/, const QString & /*orientation*/) { }

void StatusNotifierItem::ProvideXdgActivationToken(const QString &token)
{
    // Where Qt's Wayland platform looks for it; it takes it out again when it has used it.
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

} // namespace lumacap::freedesktop
