#pragma once

#include "platform/freedesktop/tray/DBusMenuTypes.h"

#include <QVariantMap>

QT_BEGIN_NAMESPACE
class QAction;
class QKeySequence;
QT_END_NAMESPACE

namespace lumacap::freedesktop {

/// An action's text as a menu host reads it. The access key is marked with "_" there and with "&"
/// in Qt; a literal mark is written twice in both.
QString menuLabel(const QString &actionText);

/// A key sequence as a menu host reads it; empty when there is none.
MenuShortcut menuShortcut(const QKeySequence &sequence);

/// All that a menu host is told about an entry. Values that the protocol could leave out are in it
/// all the same, so that a value going back to its default is told like any other change.
QVariantMap menuProperties(const QAction &action);

} // namespace lumacap::freedesktop
