#pragma once

#include "harness/PrivateDesktop.h"
#include "harness/XConnection.h"

#include <QByteArray>
#include <QList>

namespace lumacap::harness {

/// The types the clipboard offers, in the owner's order; empty when nobody owns it.
QList<QByteArray> clipboardTypes(PrivateDesktop &desktop);
/// The clipboard as `type`; empty when the owner does not give it within `limit`.
QByteArray clipboardBytes(PrivateDesktop &desktop, const char *type,
                          std::chrono::milliseconds limit = std::chrono::seconds(30));

/// Sees each time something is put on the clipboard.
class ClipboardWatch {
public:
    explicit ClipboardWatch(const QByteArray &display);
    /// How often the clipboard got an owner, or the same owner anew, since this object was made.
    int changes();

private:
    XConnection m_connection;
    int m_changes = 0;
};

} // namespace lumacap::harness
