#include "platform/freedesktop/tray/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace lumacap::freedesktop {

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout)
{
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const MenuLayout &child : layout.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout)
{
    argument.beginStructure();
    argument >> layout.id >> layout.properties;
    layout.children.clear();
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children.append(qdbus_cast<MenuLayout>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEntryProperties &entry)
{
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEntryProperties &entry)
{
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEntryLosses &entry)
{
    argument.beginStructure();
    argument << entry.id << entry.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEntryLosses &entry)
{
    argument.beginStructure();
    argument >> entry.id >> entry.names;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

void registerMenuTypes()
{
    qDBusRegisterMetaType<MenuShortcut>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuEntryProperties>();
    qDBusRegisterMetaType<QList<MenuEntryProperties>>();
    qDBusRegisterMetaType<MenuEntryLosses>();
    qDBusRegisterMetaType<QList<MenuEntryLosses>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
}

} // namespace lumacap::freedesktop
