#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QSize>
#include <QString>
#include <QThread>
#include <QVariant>

#include <memory>
#include <optional>
#include <vector>

namespace lumacap::harness {

class TrayWatcher;

/// One entry of an item's menu as a tray shows it.
struct MenuEntry {
    enum class Kind { Action, Separator };
    Kind kind = Kind::Action;
    /// Without the marks of keyboard access.
    QString label;
    /// Modifiers and key, such as "Super+q"; empty for none.
    QString shortcut;
    bool isEnabled = true;
    int identifier = 0;
};

/// A desktop's tray: watcher and host of StatusNotifierItems on a session bus.
class TrayHost {
public:
    /// Takes its place on the bus at `busAddress`; throws when that is taken.
    explicit TrayHost(const QByteArray &busAddress);
    Q_DISABLE_COPY_MOVE(TrayHost)
    /// Leaves the bus.
    ~TrayHost();

    /// Waits until there is an item with its menu; throws when none comes.
    void requireItem();
    /// How many items are registered.
    qsizetype itemCount() const;
    /// A property of the first item, invalid when it does not tell.
    QVariant property(const QString &name);
    /// The sizes of the first item's picture, in pixels.
    std::vector<QSize> iconSizes();
    /// The first item's menu from top to bottom.
    std::vector<MenuEntry> menu();
    /// Chooses the entry labelled `label`; false when there is none or the item does not answer.
    bool click(const QString &label);

private:
    std::unique_ptr<TrayWatcher> m_watcher;
    QThread m_thread;
    QString m_connectionName;
    QDBusConnection m_bus;
};

} // namespace lumacap::harness
