#include "platform/freedesktop/tray/DBusMenu.h"

#include "platform/freedesktop/tray/MenuEntryText.h"

#include <QAction>
#include <QDBusError>
#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

constexpr int rootId = 0;

QString unknownEntry(int id)
{
    return u"no menu entry has the id %1"_s.arg(id);
}

QVariantMap chosenOnes(const QVariantMap &properties, const QStringList &names)
{
    if (names.isEmpty())
        return properties;
    QVariantMap chosen;
    for (const QString &name : names) {
        if (const auto found = properties.constFind(name); found != properties.constEnd())
            chosen.insert(name, found.value());
    }
    return chosen;
}

} // namespace

DBusMenu::DBusMenu()
{
    registerMenuTypes();
}

void DBusMenu::setEntries(const QList<QAction *> &entries)
{
    for (const Entry &entry : m_entries)
        disconnect(entry.action, &QAction::changed, this, &DBusMenu::tellLater);
    m_entries.clear();
    for (QAction *const action : entries) {
        m_entries.push_back({m_nextId++, action, menuProperties(*action)});
        connect(action, &QAction::changed, this, &DBusMenu::tellLater);
    }
    Q_EMIT LayoutUpdated(++m_revision, rootId);
}

QString DBusMenu::textDirection() const
{
    return QGuiApplication::isRightToLeft() ? u"rtl"_s : u"ltr"_s;
}

QString DBusMenu::status() const
{
    return u"normal"_s;
}

uint DBusMenu::GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                         MenuLayout &layout)
{
    if (!isKnown(parentId)) {
        sendErrorReply(QDBusError::InvalidArgs, unknownEntry(parentId));
        return 0;
    }
    layout = {.id = parentId, .properties = properties(parentId, propertyNames), .children = {}};
    if (parentId == rootId && recursionDepth != 0) {
        for (const Entry &entry : m_entries)
            layout.children.append({.id = entry.id,
                                    .properties = properties(entry.id, propertyNames),
                                    .children = {}});
    }
    return m_revision;
}

QList<MenuEntryProperties> DBusMenu::GetGroupProperties(const QList<int> &ids,
                                                        const QStringList &propertyNames)
{
    QList<MenuEntryProperties> group;
    if (ids.isEmpty()) {
        group.append({.id = rootId, .properties = properties(rootId, propertyNames)});
        for (const Entry &entry : m_entries)
            group.append({.id = entry.id, .properties = properties(entry.id, propertyNames)});
        return group;
    }
    for (const int id : ids) {
        if (isKnown(id))
            group.append({.id = id, .properties = properties(id, propertyNames)});
    }
    return group;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString &name)
{
    const QVariantMap all = isKnown(id) ? properties(id, {}) : QVariantMap{};
    if (const auto found = all.constFind(name); found != all.constEnd())
        return QDBusVariant(found.value());
    sendErrorReply(QDBusError::InvalidArgs,
                   isKnown(id) ? u"the entry has no property \"%1\""_s.arg(name)
                               : unknownEntry(id));
    return QDBusVariant(QString());
}

void DBusMenu::Event(int id, const QString &eventId, const QDBusVariant & /*data*/,
                     uint /*timestamp*/)
{
    if (!isKnown(id))
        sendErrorReply(QDBusError::InvalidArgs, unknownEntry(id));
    else if (eventId == "clicked"_L1)
        choose(id);
}

QList<int> DBusMenu::EventGroup(const QList<MenuEvent> &events)
{
    QList<int> unknown;
    for (const MenuEvent &event : events) {
        if (!isKnown(event.id))
            unknown.append(event.id);
        else if (event.name == "clicked"_L1)
            choose(event.id);
    }
    if (!events.isEmpty() && unknown.size() == events.size())
        sendErrorReply(QDBusError::InvalidArgs, u"no menu entry has any of the ids"_s);
    return unknown;
}

bool DBusMenu::AboutToShow(int id)
{
    if (!isKnown(id))
        sendErrorReply(QDBusError::InvalidArgs, unknownEntry(id));
    return false;
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    idErrors.clear();
    std::ranges::copy_if(ids, std::back_inserter(idErrors),
                         [this](int id) { return !isKnown(id); });
    if (!ids.isEmpty() && idErrors.size() == ids.size())
        sendErrorReply(QDBusError::InvalidArgs, u"no menu entry has any of the ids"_s);
    return {};
}

const DBusMenu::Entry *DBusMenu::find(int id) const
{
    const auto found = std::ranges::find(m_entries, id, &Entry::id);
    return found == m_entries.end() ? nullptr : &*found;
}

bool DBusMenu::isKnown(int id) const
{
    return id == rootId || find(id);
}

QVariantMap DBusMenu::properties(int id, const QStringList &names) const
{
    if (const Entry *const entry = find(id))
        return chosenOnes(menuProperties(*entry->action), names);
    return chosenOnes({{u"children-display"_s, u"submenu"_s}}, names);
}

void DBusMenu::choose(int id)
{
    const Entry *const entry = find(id);
    if (!entry || entry->action->isSeparator())
        return;
    // On the event loop's next turn, so that the host has its answer first: what an entry does may
    // take the screen and the keyboard, which the host's menu still holds.
    QMetaObject::invokeMethod(entry->action, &QAction::trigger, Qt::QueuedConnection);
}

void DBusMenu::tellLater()
{
    if (!std::exchange(m_isTelling, true))
        QMetaObject::invokeMethod(this, &DBusMenu::tellChanges, Qt::QueuedConnection);
}

void DBusMenu::tellChanges()
{
    m_isTelling = false;
    QList<MenuEntryProperties> updated;
    QList<MenuEntryLosses> removed;
    for (Entry &entry : m_entries) {
        const QVariantMap now = menuProperties(*entry.action);
        MenuEntryProperties changes{.id = entry.id, .properties = {}};
        for (const auto &[name, value] : now.asKeyValueRange()) {
            if (entry.told.value(name) != value)
                changes.properties.insert(name, value);
        }
        MenuEntryLosses losses{.id = entry.id, .names = {}};
        for (const QString &name : entry.told.keys()) {
            if (!now.contains(name))
                losses.names.append(name);
        }
        if (!changes.properties.isEmpty())
            updated.append(changes);
        if (!losses.names.isEmpty())
            removed.append(losses);
        entry.told = now;
    }
    if (!updated.isEmpty() || !removed.isEmpty())
        Q_EMIT ItemsPropertiesUpdated(updated, removed);
}

} // namespace lumacap::freedesktop
