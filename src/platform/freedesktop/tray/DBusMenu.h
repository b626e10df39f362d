#pragma once

#include "platform/freedesktop/tray/DBusMenuTypes.h"

#include <QDBusContext>
#include <QObject>

#include <vector>

QT_BEGIN_NAMESPACE
class QAction;
QT_END_NAMESPACE

namespace lumacap::freedesktop {

/// A flat menu as a tray host draws it: com.canonical.dbusmenu over borrowed actions. To be
/// registered on a connection with its scriptable contents, which are the protocol's and bear the
/// protocol's names.
class DBusMenu : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    DBusMenu();

    /// The entries from top to bottom; they outlive the object. The entries of before are
    /// forgotten, and so are their ids: a late click on one of them meets nothing.
    void setEntries(const QList<QAction *> &entries);

    uint version() const { return 3; }
    QString textDirection() const;
    QString status() const;
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming)
    /// Entry 0 is the menu itself. A `recursionDepth` below 0 is without limit; an empty
    /// `propertyNames` asks for all. An unknown parent is an error.
    Q_SCRIPTABLE uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                                lumacap::freedesktop::MenuLayout &layout);
    /// No ids asks for all entries; unknown ids are left out.
    Q_SCRIPTABLE QList<lumacap::freedesktop::MenuEntryProperties>
    GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString &name);
    /// "clicked" chooses an entry; every other event is none of ours and is let pass.
    Q_SCRIPTABLE void Event(int id, const QString &eventId, const QDBusVariant &data,
                            uint timestamp);
    /// The ids among `events` that are unknown; an error when all of them are.
    Q_SCRIPTABLE QList<int> EventGroup(const QList<lumacap::freedesktop::MenuEvent> &events);
    /// Always false: what a host was told is never out of date.
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);
    Q_SCRIPTABLE void
    ItemsPropertiesUpdated(const QList<lumacap::freedesktop::MenuEntryProperties> &updated,
                           const QList<lumacap::freedesktop::MenuEntryLosses> &removed);
    // NOLINTEND(readability-identifier-naming)

private:
    struct Entry {
        int id;
        QAction *action;
        QVariantMap told; ///< The properties that hosts know of.
    };

    const Entry *find(int id) const;
    bool isKnown(int id) const;
    QVariantMap properties(int id, const QStringList &names) const;
    void choose(int id);
    void tellLater();
    void tellChanges();

    std::vector<Entry> m_entries;
    uint m_revision = 1;
    int m_nextId = 1;
    bool m_isTelling = false;
};

} // namespace lumacap::freedesktop
