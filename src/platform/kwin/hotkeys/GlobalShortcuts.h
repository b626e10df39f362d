#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace lumacap::kwin {

/// An action as the desktop's settings show it.
struct ShortcutAction {
    /// The same at each start of the program.
    QString name;
    /// For people.
    QString title;
};

/// The desktop's service of shortcuts, in which this program is one component.
class GlobalShortcuts final : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    /// The service is, or will be, on `bus`.
    explicit GlobalShortcuts(QDBusConnection bus);
    Q_DISABLE_COPY_MOVE(GlobalShortcuts)

    bool isThere() const { return !m_owner.isEmpty(); }

    /// Has these keys lead to `action`. One number for each of `keys`: 0 where another component
    /// has it; empty when the service does not answer in its time.
    QCoro::Task<QList<int>> setKeys(ShortcutAction action, QList<int> keys);
    /// The keys go elsewhere until they are set again; the settings show them all the same.
    void rest(const ShortcutAction &action);
    /// The service forgets the action.
    void forget(const ShortcutAction &action);

Q_SIGNALS:
    /// The service has come, or has come back and knows nothing of us.
    void appeared();
    /// Keys of an action were pressed; told once, however long they are held.
    void pressed(const QString &action);

private Q_SLOTS:
    void onPressed(const QString &component, const QString &action);
    void onReleased(const QString &component, const QString &action);

private:
    QCoro::Task<> findOwner();
    void follow(const QString &owner);
    void send(const QString &method, const QVariantList &arguments);
    bool isOurs(const QString &component) const;

    QDBusConnection m_bus;
    QDBusServiceWatcher m_owners;
    QString m_owner; // its unique name; empty while it is not there
    QHash<QString, QDeadlineTimer> m_held; // actions, and until when they can be repetitions
};

} // namespace lumacap::kwin
