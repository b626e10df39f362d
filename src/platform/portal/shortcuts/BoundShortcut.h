#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

class QDBusArgument;

namespace lumacap::portal {

/// A shortcut as the portal and its clients tell it each other.
struct BoundShortcut {
    QString id; ///< By which presses are told; the same at every start, so that consent is kept.
    QVariantMap facts; ///< Its description, its preferred keys, the keys it has.
};

QDBusArgument &operator<<(QDBusArgument &argument, const BoundShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, BoundShortcut &shortcut);

/// Makes lists of shortcuts known to the bus; may be called often.
void registerBoundShortcuts();

/// The ids in the portal's list of shortcuts; none where `told` is no such list.
QStringList idsIn(const QVariant &told);

} // namespace lumacap::portal
