#include "platform/portal/shortcuts/BoundShortcut.h"

#include <QDBusArgument>
#include <QDBusMetaType>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

QDBusArgument &operator<<(QDBusArgument &argument, const BoundShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.facts;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, BoundShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.facts;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): Qt asks for this form
}

void registerBoundShortcuts()
{
    qDBusRegisterMetaType<BoundShortcut>();
    qDBusRegisterMetaType<QList<BoundShortcut>>();
}

QStringList idsIn(const QVariant &told)
{
    QStringList ids;
    if (told.metaType() != QMetaType::fromType<QDBusArgument>()
        || told.value<QDBusArgument>().currentSignature() != "a(sa{sv})"_L1)
        return ids;
    for (const BoundShortcut &shortcut : qdbus_cast<QList<BoundShortcut>>(told))
        ids.append(shortcut.id);
    return ids;
}

} // namespace lumacap::portal
