#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace lumacap::freedesktop {

// The values that com.canonical.dbusmenu passes, with the signatures it passes them under.

/// A shortcut, aas: a list of key presses, each its modifiers followed by the key's name.
using MenuShortcut = QList<QStringList>;

/// An entry with what lies below it, (ia{sv}av).
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

/// An entry's properties, (ia{sv}).
struct MenuEntryProperties {
    int id = 0;
    QVariantMap properties;

    friend bool operator==(const MenuEntryProperties &, const MenuEntryProperties &) = default;
};

/// The names of properties that an entry lost, (ias).
struct MenuEntryLosses {
    int id = 0;
    QStringList names;

    friend bool operator==(const MenuEntryLosses &, const MenuEntryLosses &) = default;
};

/// What a host saw happen to an entry, (isvu).
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuEntryProperties &entry);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEntryProperties &entry);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuEntryLosses &entry);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEntryLosses &entry);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event);

/// Makes the types known to Qt's D-Bus; harmless when repeated.
void registerMenuTypes();

} // namespace lumacap::freedesktop

Q_DECLARE_METATYPE(lumacap::freedesktop::MenuLayout)
Q_DECLARE_METATYPE(lumacap::freedesktop::MenuEntryProperties)
Q_DECLARE_METATYPE(lumacap::freedesktop::MenuEntryLosses)
Q_DECLARE_METATYPE(lumacap::freedesktop::MenuEvent)
